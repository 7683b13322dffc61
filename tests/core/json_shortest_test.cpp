#include "core/json_shortest.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cstring>
#include <random>
#include <string>

#include "json_testing.h"

namespace lumisk::json {
namespace {

/// The 16 or 17 digits of the shortest form of a double, when it has so many.
struct Printed {
  std::uint64_t digits = 0;
  std::int64_t exponent = 0;
};

Printed printed(double value) {
  std::array<char, 32> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific);
  const std::string all(text.data(), end.ptr);
  const std::size_t mark = all.find('e');
  std::string digits = all.substr(0, mark);
  if (digits.size() > 1) digits.erase(1, 1);
  if (digits.size() < 16) return {};
  return {std::stoull(digits),
          std::stoll(all.substr(mark + 1)) - static_cast<std::int64_t>(digits.size()) + 1};
}

double randomDouble(std::mt19937_64& random, std::uint64_t minExponent, std::uint64_t exponents) {
  const std::uint64_t bits =
      ((minExponent + random() % exponents) << 52) | (random() & ((std::uint64_t{1} << 52) - 1));
  double value = 0;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

TEST(JsonShortest, TellsForNearlyAllDoubles) {
  if (!isSurelyShortest(1234567890123457, -15)) GTEST_SKIP() << "no 128-bit integers here";
  std::mt19937_64 random(21);
  int asked = 0;
  int told = 0;
  for (int i = 0; i < 200000; ++i) {
    const Printed number = printed(randomDouble(random, 200, 1600));
    if (number.digits == 0) continue;
    ++asked;
    told += isSurelyShortest(number.digits, number.exponent) ? 1 : 0;
  }
  EXPECT_GT(asked, 100000);
  EXPECT_GT(told, asked / 100 * 97);
}

/// The digits of the shortest form, without zeros at their ends.
std::uint64_t shortestDigits(std::uint64_t digits, std::int64_t exponent) {
  const std::string shown =
      test::naiveShortestDecimal(std::to_string(digits) + "e" + std::to_string(exponent));
  std::string result;
  for (const char byte : shown.substr(0, shown.find('e'))) {
    if (byte != '.') result += byte;
  }
  result.erase(result.find_last_not_of('0') + 1);
  return std::stoull(result);
}

/// A "no" always is right.
bool isRight(std::uint64_t digits, std::int64_t exponent) {
  if (digits % 10 == 0 || !isSurelyShortest(digits, exponent)) return true;
  return shortestDigits(digits, exponent) == digits;
}

TEST(JsonShortest, NeverTellsWrongly) {
  std::mt19937_64 random(22);
  for (int i = 0; i < 100000; ++i) {
    const std::uint64_t bound = random() % 2 == 0 ? 9000000000000000 : 90000000000000000;
    const std::uint64_t digits = bound / 9 + random() % bound;
    const auto exponent = static_cast<std::int64_t>(random() % 620) - 320;
    ASSERT_TRUE(isRight(digits, i % 2 == 0 ? exponent : exponent / 16)) << digits;
  }
}

TEST(JsonShortest, NeverTellsWronglyNextToPowersOfTwoAndToShortDecimals) {
  std::mt19937_64 random(23);
  for (int i = 0; i < 8000; ++i) {
    const std::uint64_t exponentBits = 100 + random() % 1800;
    double value = 0;
    const std::uint64_t bits = (exponentBits << 52) + random() % 5 - 2;
    std::memcpy(&value, &bits, sizeof(value));
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.16e", value);
    const std::string all = text.data();
    const std::uint64_t digits = std::stoull(all.substr(0, 1) + all.substr(2, 16));
    const std::int64_t exponent = std::stoll(all.substr(19)) - 16;
    for (std::uint64_t near = digits - 12; near <= digits + 12; near += 3) {
      ASSERT_TRUE(isRight(near, exponent)) << near;
    }
    const std::uint64_t rounded = digits / 1000 * 1000 + random() % 21 - 10;
    ASSERT_TRUE(isRight(rounded, exponent)) << rounded;
  }
}

}  // namespace
}  // namespace lumisk::json
