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

/// The greatest size that `plainNumber` finds. It may read one byte more.
inline constexpr std::size_t kMaxPlainNumberSize = 32;

/// Whether the `size` digits at `digits`, all but the point after `integerSize` of them, are the
/// shortest decimal of their value, or would be without zeros at their end. May say no when they
/// are.
bool isShortestDecimal(const char* digits, std::size_t integerSize, std::size_t size);

inline constexpr PlainNumber kNotPlain = {nullptr, 0};

/// `plainNumber` for what does not end within a block and for decimals.
template <typename Block>
PlainNumber plainDecimal(const char* in) {
  static_assert(Block::kSize == 16);
  const char* const digits = in + (*in == '-' ? 1 : 0);
  const std::uint32_t marks =
      Block::load(digits).nonDigits() | (Block::load(digits + 16).nonDigits() << 16);
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

/// The number at `in`, where kMaxPlainNumberSize + 1 bytes are readable.
template <typename Block>
PlainNumber plainNumber(const char* in) {
  const char* const digits = in + (*in == '-' ? 1 : 0);
  const std::uint32_t marks = Block::load(digits).nonDigits();
  const int size = std::countr_zero(marks);
  if (marks == 0 || size == 0 || (*digits == '0' && size > 1)) return plainDecimal<Block>(in);
  const char* const end = digits + size;
  if (*end == '.' || *end == 'e' || *end == 'E') return plainDecimal<Block>(in);
  return {end, static_cast<std::size_t>(end - in)};
}

}  // namespace lumisk::json
