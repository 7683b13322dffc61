#include "core/json_shortest.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdlib>

namespace lumisk::json {

#if defined(__SIZEOF_INT128__)

namespace {

__extension__ using Uint128 = unsigned __int128;

// Within these the doubles of 17 digits are normal and finite.
constexpr std::int64_t kMinPower = -300;
constexpr std::int64_t kMaxPower = 280;

/// 10^power as a fraction of 64 bits, the top one set; too small by less than its last bit. The
/// exponent of two is left out: what is asked of the numbers here does not depend on it.
constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, kMaxPower - kMinPower + 1> powers{};
  const auto at = [&](std::int64_t power) -> std::uint64_t& {
    return powers[static_cast<std::size_t>(power - kMinPower)];
  };
  constexpr Uint128 kTopBit = Uint128{1} << 127;
  Uint128 fraction = kTopBit;
  for (std::int64_t power = 0; power <= kMaxPower; ++power) {
    at(power) = static_cast<std::uint64_t>(fraction >> 64);
    fraction = (fraction >> 4) * 10;
    if (fraction < kTopBit) fraction <<= 1;
  }
  fraction = kTopBit;
  for (std::int64_t power = 0; power >= kMinPower; --power) {
    at(power) = static_cast<std::uint64_t>(fraction >> 64);
    fraction /= 10;
    while (fraction < kTopBit) fraction <<= 1;
  }
  return powers;
}();

constexpr std::uint64_t kSmallestMantissa = std::uint64_t{1} << 52;

// Lengths on the number line in units of 2^-54 of the gap between doubles.
constexpr std::int64_t kGap = std::int64_t{1} << 54;
constexpr std::int64_t kHalfGap = kGap / 2;
/// What the power's missing bits may come to in the product, twice over.
constexpr std::int64_t kError = std::int64_t{1} << 46;

}  // namespace

bool isSurelyShortest(std::uint64_t digits, std::int64_t exponent) {
  if (exponent < kMinPower || exponent > kMaxPower) return false;
  const std::uint64_t power = kPowersOfTen[static_cast<std::size_t>(exponent - kMinPower)];
  int shift = std::countl_zero(digits);
  Uint128 product = Uint128{digits << shift} * power;
  const int isHalf = static_cast<int>(~(product >> 127) & 1);
  product <<= isHalf;
  shift += isHalf;
  // The number is (mantissa + beyond) gaps from zero, and one unit of `digits` is `unit`.
  const auto mantissa = static_cast<std::uint64_t>(product >> 75);
  const auto beyond = static_cast<std::int64_t>(static_cast<std::uint64_t>(product >> 21) &
                                                static_cast<std::uint64_t>(kGap - 1));
  const auto unit = static_cast<std::int64_t>((Uint128{power} << shift) >> 21);

  // Its double is below it or above it, by `offset`. No branch: one could not be predicted.
  const int isAbove = beyond > kHalfGap ? 1 : 0;
  const std::int64_t offset = beyond - isAbove * kGap;
  const std::uint64_t rounded = mantissa + static_cast<std::uint64_t>(isAbove);
  const bool isPowerOfTwo = (rounded & (kSmallestMantissa - 1)) == 0;  // a smaller gap before it
  if (isPowerOfTwo || std::abs(beyond - kHalfGap) <= kError) return false;
  // With one digit less, it would be one of these two, if that had the same double.
  const auto lastDigit = static_cast<std::int64_t>(digits % 10);
  const std::int64_t shorterBelow = offset - lastDigit * unit;
  const std::int64_t shorterAbove = offset + (10 - lastDigit) * unit;
  if (shorterBelow >= -kHalfGap - kError || shorterAbove <= kHalfGap + kError) return false;
  // With as many digits, a neighbour may be closer to the double.
  return 2 * std::abs(offset) < unit - kError;
}

#else

bool isSurelyShortest(std::uint64_t, std::int64_t) { return false; }

#endif

}  // namespace lumisk::json
