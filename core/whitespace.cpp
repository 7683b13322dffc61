#include "core/whitespace.h"

#include <array>

namespace lumisk {

namespace {

// All of them but the tab and the space. None is the end of another, so a text can be asked from
// its end as well as from its start.
constexpr std::array<std::string_view, 16> kWideBlanks = {
    "\xC2\xA0",                                      // U+00A0
    "\xE1\x9A\x80",                                  // U+1680
    "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",  // U+2000 to U+200A
    "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85",  //
    "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88",  //
    "\xE2\x80\x89", "\xE2\x80\x8A",                  //
    "\xE2\x80\xAF",                                  // U+202F
    "\xE2\x81\x9F",                                  // U+205F
    "\xE3\x80\x80",                                  // U+3000
};

constexpr bool isNarrowBlank(char byte) { return byte == ' ' || byte == '\t'; }
constexpr bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

std::size_t trailingBlankSize(std::string_view text) {
  if (text.empty()) return 0;
  if (isAscii(text.back())) return isNarrowBlank(text.back()) ? 1 : 0;
  for (const std::string_view blank : kWideBlanks) {
    if (text.ends_with(blank)) return blank.size();
  }
  return 0;
}

}  // namespace

std::size_t leadingBlankSize(std::string_view text) {
  if (text.empty()) return 0;
  if (isAscii(text.front())) return isNarrowBlank(text.front()) ? 1 : 0;
  for (const std::string_view blank : kWideBlanks) {
    if (text.starts_with(blank)) return blank.size();
  }
  return 0;
}

std::string_view trimmedBlanks(std::string_view text) {
  while (const std::size_t size = leadingBlankSize(text)) text.remove_prefix(size);
  while (const std::size_t size = trailingBlankSize(text)) text.remove_suffix(size);
  return text;
}

}  // namespace lumisk
