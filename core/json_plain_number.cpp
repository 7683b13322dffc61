#include "core/json_plain_number.h"

#include <algorithm>
#include <array>

#include "core/json_shortest.h"

namespace lumisk::json {

namespace {

constexpr std::array<std::uint64_t, 9> kPowersOfTen = {1,      10,      100,      1000,     10000,
                                                       100000, 1000000, 10000000, 100000000};

/// The value of the first `count` (0 to 8) digits at `digits`; eight bytes are read.
std::uint64_t valueOfDigits(const char* digits, std::size_t count) {
  if constexpr (std::endian::native != std::endian::little) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
      value = value * 10 + static_cast<std::uint64_t>(digits[i] - '0');
    }
    return value;
  }
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, digits, sizeof(bytes));
  // The first digit is the lowest byte. What follows the wanted ones is shifted out, so that zeros
  // stand before them; in two steps, as eight bytes at once are more than a shift allows. Then
  // pairs of digits are joined, pairs of pairs, and the two halves.
  const std::size_t halfOfUnwantedBits = 4 * (8 - count);
  bytes = (bytes << halfOfUnwantedBits << halfOfUnwantedBits) & 0x0F0F0F0F0F0F0F0F;
  bytes = (bytes * (10 * 0x100 + 1) >> 8) & 0x00FF00FF00FF00FF;
  bytes = (bytes * (100 * 0x10000 + 1) >> 16) & 0x0000FFFF0000FFFF;
  return bytes * (std::uint64_t{10000} * 0x100000000 + 1) >> 32;
}

/// Up to 8 digits before the point and 24 behind it, 19 that matter in all. Without branches:
/// where the point stands cannot be predicted.
std::uint64_t valueOfDecimal(const char* digits, std::size_t integerSize, std::size_t size) {
  std::uint64_t value = valueOfDigits(digits, integerSize);
  const char* at = digits + integerSize + 1;
  std::size_t left = size - integerSize - 1;
  for (int part = 0; part < 3; ++part) {
    const std::size_t count = std::min<std::size_t>(left, 8);
    value = value * kPowersOfTen[count] + valueOfDigits(at, count);
    at += count;
    left -= count;
  }
  return value;
}

bool hasFourZeros(const char* digits) { return std::memcmp(digits, "0000", 4) == 0; }

}  // namespace

bool isShortestDecimal(const char* digits, std::size_t integerSize, std::size_t size) {
  constexpr std::size_t kSafeDigits = 15;
  constexpr std::size_t kMaxDigits = 17;
  constexpr std::size_t kMaxDigitsWithLeadingZeros = 19;
  constexpr std::size_t kMaxIntegerSize = 8;
  const bool isBelowOne = digits[0] == '0';
  // Below 1e-4 the exponent form is due.
  if (isBelowOne && hasFourZeros(digits + 2)) return false;
  const std::size_t count = size - 1 - (isBelowOne ? 1 : 0);
  if (count <= kSafeDigits) return true;
  // Zeros at the end count as digits, and may be too many.
  if (count > (isBelowOne ? kMaxDigitsWithLeadingZeros : kMaxDigits) ||
      integerSize > kMaxIntegerSize || digits[size - 1] == '0') {
    return false;
  }
  const std::uint64_t value = valueOfDecimal(digits, integerSize, size);
  if (value < 1000000000000000) return true;
  if (value >= 100000000000000000) return false;
  return isSurelyShortest(value, -static_cast<std::int64_t>(size - integerSize - 1));
}

}  // namespace lumisk::json
