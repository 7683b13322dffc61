#include "core/json_string.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace lumisk::json {

namespace {

constexpr std::size_t kUnicodeEscapeSize = 6;  // \u00e9
constexpr std::uint32_t kNoHexDigits = 0xFFFFFFFF;

char* write(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

/// The values of the hexadecimal digits; for every other byte so high that it shows in any sum.
constexpr std::array<std::uint32_t, 256> kHexValues = [] {
  std::array<std::uint32_t, 256> values{};
  values.fill(0x10000);
  for (std::uint32_t i = 0; i < 10; ++i) values['0' + i] = i;
  for (std::uint32_t i = 0; i < 6; ++i) values['a' + i] = values['A' + i] = 10 + i;
  return values;
}();

/// The code unit that an escape "\uXXXX" at `in` stands for, or kNoHexDigits.
std::uint32_t codeUnit(const Stream& stream, const char* in) {
  if (stream.remaining(in) < kUnicodeEscapeSize || in[0] != '\\' || in[1] != 'u') {
    return kNoHexDigits;
  }
  const auto value = [in](std::size_t i) { return kHexValues[static_cast<unsigned char>(in[i])]; };
  const std::uint32_t unit = (value(2) << 12) | (value(3) << 8) | (value(4) << 4) | value(5);
  return unit <= 0xFFFF ? unit : kNoHexDigits;
}

bool isHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

char* writeUtf8(char* out, std::uint32_t point) {
  const auto tail = [point](int shift) {
    return static_cast<char>(0x80 | ((point >> shift) & 0x3F));
  };
  if (point < 0x80) {
    *out++ = static_cast<char>(point);
  } else if (point < 0x800) {
    *out++ = static_cast<char>(0xC0 | (point >> 6));
    *out++ = tail(0);
  } else if (point < 0x10000) {
    *out++ = static_cast<char>(0xE0 | (point >> 12));
    *out++ = tail(6);
    *out++ = tail(0);
  } else {
    *out++ = static_cast<char>(0xF0 | (point >> 18));
    *out++ = tail(12);
    *out++ = tail(6);
    *out++ = tail(0);
  }
  return out;
}

char* writeControl(char* out, std::uint32_t control) {
  switch (control) {
    case '\b':
      return write(out, "\\b");
    case '\f':
      return write(out, "\\f");
    case '\n':
      return write(out, "\\n");
    case '\r':
      return write(out, "\\r");
    case '\t':
      return write(out, "\\t");
    default:
      break;
  }
  out = write(out, "\\u00");
  *out++ = "01"[control >> 4];
  *out++ = "0123456789abcdef"[control & 0xF];
  return out;
}

/// Writes the character `point` as it stands in a string.
char* writeCharacter(char* out, std::uint32_t point) {
  switch (point) {
    case '"':
      return write(out, "\\\"");
    case '\\':
      return write(out, "\\\\");
    case '&':
      return write(out, "&amp;");
    case '<':
      return write(out, "&lt;");
    case '>':
      return write(out, "&gt;");
    default:
      return point < 0x20 ? writeControl(out, point) : writeUtf8(out, point);
  }
}

}  // namespace

Cursor copyUnicodeEscape(const Stream& stream, Cursor cursor) {
  std::uint32_t point = codeUnit(stream, cursor.in);
  if (point == kNoHexDigits || isLowSurrogate(point)) return kFailed;
  cursor.in += kUnicodeEscapeSize;
  if (isHighSurrogate(point)) {
    const std::uint32_t low = codeUnit(stream, cursor.in);
    if (!isLowSurrogate(low)) return kFailed;
    point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
    cursor.in += kUnicodeEscapeSize;
  }
  cursor.out = writeCharacter(cursor.out, point);
  return cursor;
}

Cursor copyStringByBytes(Stream& stream, Cursor cursor) {
  while (!cursor.failed() && cursor.in < stream.end()) {
    cursor = stream.withRoom(cursor);
    if (!isOfKind(*cursor.in, kStringStop)) {
      *cursor.out++ = *cursor.in++;
      continue;
    }
    const bool isEnd = *cursor.in == '"';
    // The text ends in a bracket, so another byte follows.
    cursor = copyStop(stream, cursor);
    if (isEnd) return cursor;
  }
  return kFailed;
}

}  // namespace lumisk::json
