#include "desktop/display_text.h"

#include <glib.h>

#include <algorithm>

namespace lumisk::desktop {
namespace {

constexpr std::string_view kSymbolForNul = "\u2400";
constexpr std::string_view kSymbolForLineEnd = "\u23ce";

void replaceAll(std::string& text, char from, std::string_view to) {
  if (text.find(from) == std::string::npos) return;
  std::string result;
  for (const char c : text) {
    if (c == from)
      result += to;
    else
      result += c;
  }
  text = std::move(result);
}

}  // namespace

std::string displayText(std::string_view text) {
  std::string result(text);
  replaceAll(result, '\0', kSymbolForNul);
  if (g_utf8_validate(result.data(), static_cast<gssize>(result.size()), nullptr)) return result;
  char* valid = g_utf8_make_valid(result.data(), static_cast<gssize>(result.size()));
  result = valid;
  g_free(valid);
  return result;
}

std::string displayLine(std::string_view text) {
  std::string result = displayText(text);
  replaceAll(result, '\n', kSymbolForLineEnd);
  replaceAll(result, '\r', kSymbolForLineEnd);
  return result;
}

}  // namespace lumisk::desktop
