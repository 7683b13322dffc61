#include "desktop/display_text.h"

#include <glib.h>

#include <algorithm>

namespace lumisk::desktop {
namespace {

constexpr std::string_view kSymbolForNul = "\u2400";
constexpr std::string_view kSymbolForLineEnd = "\u23ce";

constexpr std::string_view kReplacement = "\uFFFD";
constexpr std::string_view kEllipsis = "\u2026";
constexpr std::size_t kLongestTitle = 1024;  // bytes; no window is wide enough for as many letters

/// Not within a character: what follows the place begins one.
std::string_view firstBytes(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  constexpr unsigned char kContinuationMask = 0xC0;
  constexpr unsigned char kContinuation = 0x80;
  std::size_t length = most;
  for (int i = 0; i < 3 && length > 0; ++i, --length)
    if ((static_cast<unsigned char>(text[length]) & kContinuationMask) != kContinuation) break;
  return text.substr(0, length);
}

bool breaksLine(gunichar character) {
  const GUnicodeType type = g_unichar_type(character);
  return type == G_UNICODE_CONTROL || type == G_UNICODE_LINE_SEPARATOR ||
         type == G_UNICODE_PARAGRAPH_SEPARATOR;
}

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

std::string displayTitle(std::string_view text) {
  const std::string line = displayLine(firstBytes(text, kLongestTitle));
  std::string title;
  for (const char* at = line.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
    const auto length = static_cast<std::size_t>(g_utf8_next_char(at) - at);
    title += breaksLine(g_utf8_get_char(at)) ? kReplacement : std::string_view(at, length);
  }
  return text.size() > kLongestTitle ? title.append(kEllipsis) : title;
}

}  // namespace lumisk::desktop
