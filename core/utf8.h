#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumisk {

/// Whether `bytes` is well-formed UTF-8 (Unicode 15, table 3-7): no overlong form, no surrogate,
/// nothing above U+10FFFF. NUL is a character like any other.
bool isValidUtf8(std::string_view bytes);

/// Whether well-formed UTF-8 can begin with `bytes`: all of it is, but for a last sequence that is
/// cut off, which is not looked at further.
bool canBeginUtf8(std::string_view bytes);

/// The text that a file holds: `bytes` without one leading byte-order mark, or nothing when they
/// are no UTF-8. The result points into `bytes`.
std::optional<std::string_view> decodedUtf8(std::string_view bytes);

/// `bytes` with each byte that is no part of a well-formed sequence replaced by U+FFFD.
std::string withReplacementCharacters(std::string_view bytes);

/// Calls `visit(char32_t codePoint, std::string_view itsBytes)` for each code point of `text`,
/// which must be well-formed.
template <typename Visit>
void forEachCodePoint(std::string_view text, Visit visit) {
  for (std::size_t at = 0; at < text.size();) {
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t length = first < 0x80 ? 1U : first < 0xE0 ? 2U : first < 0xF0 ? 3U : 4U;
    char32_t point = length == 1 ? first : static_cast<char32_t>(first & (0xFFU >> (length + 1)));
    for (std::size_t i = 1; i < length; ++i) {
      point = (point << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    visit(point, text.substr(at, length));
    at += length;
  }
}

/// Appends the UTF-8 form of `point`, which must be a Unicode scalar value.
void appendUtf8(std::string& out, char32_t point);

}  // namespace lumisk
