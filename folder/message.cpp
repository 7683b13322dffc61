#include "folder/message.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumisk {
namespace {

constexpr std::string_view kPosition = "1$";
constexpr std::array<std::string_view, 4> kConversions = {"lld", "ld", "d", "s"};

/// Length of the conversion that `text`, which begins after a "%", begins with; 0 if none does.
std::size_t conversionLength(std::string_view text) {
  const std::size_t position = text.starts_with(kPosition) ? kPosition.size() : 0;
  const std::string_view rest = text.substr(position);
  const auto* found = std::ranges::find_if(
      kConversions, [&](std::string_view conversion) { return rest.starts_with(conversion); });
  return found == kConversions.end() ? 0 : position + found->size();
}

}  // namespace

std::string formatMessage(std::string_view text, std::string_view argument) {
  std::string message;
  while (true) {
    const std::size_t percent = text.find('%');
    message.append(text.substr(0, percent));
    if (percent == std::string_view::npos) return message;
    text.remove_prefix(percent + 1);
    const std::size_t length = conversionLength(text);
    message.append(length > 0 ? argument : "%");
    text.remove_prefix(length == 0 && text.starts_with('%') ? 1 : length);
  }
}

}  // namespace lumisk
