#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

#include "core/utf8.h"
#include "ui/outline.h"

namespace lumisk::ui {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// What a reader of the quoted text could not see, or what would move the rest of the line.
constexpr std::array kUnreadable = {
    Range{0x00, 0x1F},      // controls
    Range{0x7F, 0x9F},      // DEL and the second set of controls
    Range{0x061C, 0x061C},  // Arabic letter mark
    Range{0x200B, 0x200F},  // zero-width characters and direction marks
    Range{0x2028, 0x202E},  // line and paragraph separators, embeddings and overrides
    Range{0x2060, 0x2069},  // invisible operators, isolates
    Range{0xFEFF, 0xFEFF},  // byte-order mark
};

bool isUnreadable(char32_t point) {
  return std::ranges::any_of(
      kUnreadable, [=](Range range) { return point >= range.first && point <= range.last; });
}

std::string hex(unsigned number) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), number, 16);
  return {digits.data(), end.ptr};
}

void appendPoint(std::string& out, char32_t point, std::string_view bytes) {
  switch (point) {
    case U'"':
      out += "\\\"";
      return;
    case U'\\':
      out += "\\\\";
      return;
    case U'\n':
      out += "\\n";
      return;
    case U'\r':
      out += "\\r";
      return;
    case U'\t':
      out += "\\t";
      return;
    default:
      if (isUnreadable(point)) {
        out += "\\u{" + hex(static_cast<unsigned>(point)) + "}";
      } else {
        out += bytes;
      }
  }
}

std::size_t lengthFromFirstByte(char first) {
  const auto byte = static_cast<unsigned char>(first);
  return byte < 0x80 ? 1U : byte < 0xE0 ? 2U : byte < 0xF0 ? 3U : 4U;
}

}  // namespace

std::string inQuotes(std::string_view text) {
  std::string out = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view bytes = text.substr(at, lengthFromFirstByte(text[at]));
    if (isValidUtf8(bytes)) {
      forEachCodePoint(bytes,
                       [&](char32_t point, std::string_view its) { appendPoint(out, point, its); });
      at += bytes.size();
    } else {
      const unsigned byte = static_cast<unsigned char>(text[at]);
      out += byte < 0x10 ? "\\x0" : "\\x";
      out += hex(byte);
      ++at;
    }
  }
  return out + "\"";
}

}  // namespace lumisk::ui
