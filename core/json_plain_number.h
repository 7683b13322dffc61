#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lumisk::json {

// Nearly all numbers of a file are integers or decimals that are shown as they stand, or without
// the zeros at their end. To see that takes no arithmetic, or little.

/// A number that is shown by the first `shownSize` bytes of what stands up to `end`; `end` is null
/// when it takes more than that, or is no number.
struct PlainNumber {
  const char* end;
  std::size_t shownSize;
};

/// How far `plainNumber` may read, and the greatest size it finds.
inline constexpr std::ptrdiff_t kPlainNumberReads = 33;
inline constexpr std::size_t kMaxPlainNumberSize = 32;

/// Whether the `size` digits at `digits`, all but the point after `integerSize` of them, are the
/// shortest decimal of their value, or would be without zeros at their end. May say no when they
/// are.
bool isShortestDecimal(const char* digits, std::size_t integerSize, std::size_t size);

/// Bit i is clear when byte i is a digit.
template <typename Block>
std::uint32_t nonDigitsOf32(const char* in) {
  if constexpr (Block::kSize == 32) {
    return Block::load(in).nonDigits();
  } else {
    return Block::load(in).nonDigits() | (Block::load(in + 16).nonDigits() << 16);
  }
}

/// The number at `in`, where kPlainNumberReads bytes are readable.
template <typename Block>
PlainNumber plainNumber(const char* in) {
  constexpr PlainNumber kNotPlain = {nullptr, 0};
  const char* const digits = in + (*in == '-' ? 1 : 0);
  const std::uint32_t marks = nonDigitsOf32<Block>(digits);
  const auto integerSize = static_cast<std::size_t>(std::countr_zero(marks));
  if (marks == 0 || integerSize == 0 || (*digits == '0' && integerSize > 1)) return kNotPlain;
  const char* const point = digits + integerSize;
  if (*point == 'e' || *point == 'E') return kNotPlain;
  if (*point != '.') return {point, static_cast<std::size_t>(point - in)};

  const std::uint32_t marksBehind = marks & (marks - 1);
  const auto size = static_cast<std::size_t>(std::countr_zero(marksBehind));
  const char* const end = digits + size;
  if (marksBehind == 0 || end == point + 1 || *end == 'e' || *end == 'E' ||
      !isShortestDecimal(digits, integerSize, size)) {
    return kNotPlain;
  }
  const char* shownEnd = end;
  while (shownEnd[-1] == '0') --shownEnd;
  if (shownEnd == point + 1) shownEnd = point;
  return {end, static_cast<std::size_t>(shownEnd - in)};
}

}  // namespace lumisk::json
