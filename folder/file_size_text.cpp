#include "folder/file_size_text.h"

#include <array>
#include <charconv>
#include <string_view>

namespace lumisk {
namespace {

constexpr double kStep = 1024;

/// Rounded as printf does, but with a full stop in every locale.
std::string rounded(double number, int decimals, std::string_view unit) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                 std::chars_format::fixed, decimals);
  std::string text(digits.data(), end.ptr);
  return text.append(unit);
}

}  // namespace

std::string formatFileSize(std::int64_t bytes) {
  const double kilobytes = static_cast<double>(bytes) / kStep;
  const double megabytes = kilobytes / kStep;
  const double gigabytes = megabytes / kStep;
  if (gigabytes >= 1) return rounded(gigabytes, 1, " GB");
  if (megabytes >= 1) return rounded(megabytes, 1, " MB");
  if (kilobytes >= 1) return rounded(kilobytes, 0, " KB");
  return std::to_string(bytes) + " B";
}

}  // namespace lumisk
