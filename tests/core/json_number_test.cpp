#include "core/json_number.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "json_testing.h"
#include "random_json.h"

namespace lumisk {
namespace {

/// As a page shows it.
std::string shortest(const std::string& literal) {
  std::array<char, json::kMaxDecimalSize> text{};
  char* const end = json::writeShortestDecimal(literal, text.data());
  return end == nullptr ? literal : std::string(text.data(), end);
}

struct Row {
  std::string label;
  std::string literal;
  std::string shown;
};

TEST(JsonNumber, FractionsAndExponentsAreWrittenShort) {
  const std::vector<Row> rows = {
      {"no fraction left", "3.0", "3"},
      {"trailing zero", "2.50", "2.5"},
      {"small exponent is written out", "1e2", "100"},
      {"signed exponent", "1e+2", "100"},
      {"exponent zero", "7e0", "7"},
      {"exponent with zeros", "7e0000", "7"},
      {"exponent with leading zeros", "12e-0002", "0.12"},
      {"negative", "-12.50", "-12.5"},
      {"two exponent digits at least", "1E-7", "1e-07"},
      {"three exponent digits", "1.5e300", "1.5e+300"},
      {"smallest that is written out", "0.0001", "0.0001"},
      {"smallest that is written out, as exponent", "1e-4", "0.0001"},
      {"below", "0.00009", "9e-05"},
      {"below, several digits", "0.0000123", "1.23e-05"},
      {"largest power that is written out", "1e15", "1000000000000000"},
      {"first that is not", "1e16", "1e+16"},
      {"just below it", "9999999999999998.0", "9999999999999998"},
      {"rounds up to it", "9999999999999999.5", "1e+16"},
      {"digits on both sides", "123456789012345.6", "123456789012345.6"},
      {"exponent moves the point", "123.456e-1", "12.3456"},
      {"exponent moves the point out", "123.456e5", "12345600"},
      {"leading zeros", "0.00500", "0.005"},
      {"tenth", "0.1", "0.1"},
      {"sixteen digits", "0.1234567890123456", "0.1234567890123456"},
      {"seventeen digits, all needed", "0.30000000000000004", "0.30000000000000004"},
      {"seventeen digits, one needed", "0.10000000000000001", "0.1"},
      {"seventeen digits, not the closest", "0.30000000000000002", "0.30000000000000004"},
      {"seventeen digits, trailing zeros among them", "1.0000000000000000", "1"},
      {"leading zeros are not counted", "0.0000000000000000000000000000001", "1e-31"},
  };
  for (const auto& [label, literal, shown] : rows) EXPECT_EQ(shortest(literal), shown) << label;
}

TEST(JsonNumber, ZeroKeepsItsSignOnly) {
  const std::vector<Row> rows = {
      {"zero", "0.0", "0"},
      {"minus zero", "-0.0", "-0"},
      {"zero with exponent", "0e5", "0"},
      {"zero with an exponent beyond doubles", "0e400", "0"},
      {"zero with an exponent beyond integers", "0e99999999999999999999999", "0"},
      {"minus zero with exponent", "-0E-0", "-0"},
      {"long zero", "0." + std::string(1000, '0'), "0"},
  };
  for (const auto& [label, literal, shown] : rows) EXPECT_EQ(shortest(literal), shown) << label;
}

TEST(JsonNumber, WhatADoubleCannotHoldStaysAsWritten) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"eighteen digits", "1.00000000000000001"},
      {"eighteen digits, trailing zeros counted", "1.00000000000000000"},
      {"eighteen digits before the point", "100000000000000000.0"},
      {"eighteen digits and an exponent", "123456789012345678e2"},
      {"too large", "1e400"},
      {"just too large", "1.7976931348623159e308"},
      {"negative, too large", "-1E+309"},
      {"exponent beyond integers", "1e99999999999999999999999"},
      {"too small", "1e-400"},
      {"just too small", "2.4703282292062327e-324"},
      {"exponent far below", "1e-99999999999999999999999"},
      {"zeros and a digit too small", "0." + std::string(1000, '0') + "1"},
  };
  for (const auto& [label, literal] : rows) EXPECT_EQ(shortest(literal), literal) << label;
}

TEST(JsonNumber, EdgesOfTheRangeAreHeld) {
  const std::vector<Row> rows = {
      {"largest", "1.7976931348623157e308", "1.7976931348623157e+308"},
      {"rounds to the largest", "1.7976931348623158e308", "1.7976931348623157e+308"},
      {"smallest normal", "2.2250738585072014e-308", "2.2250738585072014e-308"},
      {"largest subnormal", "2.2250738585072009e-308", "2.225073858507201e-308"},
      {"smallest", "5e-324", "5e-324"},
      {"rounds to the smallest", "2.5e-324", "5e-324"},
      {"few digits, but a subnormal has fewer", "1.2345e-322", "1.24e-322"},
      {"exponent that leading zeros make up for", "0." + std::string(400, '0') + "15e401", "1.5"},
      {"exponent beyond doubles that leading zeros make up for",
       "0." + std::string(100000, '0') + "15e100001", "1.5"},
  };
  for (const auto& [label, literal, shown] : rows) EXPECT_EQ(shortest(literal), shown) << label;
}

TEST(JsonNumber, AgreesWithASearchThroughAllLengths) {
  std::mt19937 random(20240501);
  for (int i = 0; i < 200000; ++i) {
    const std::string literal = test::randomNumber(random);
    if (literal.find_first_of(".eE") == std::string::npos) continue;
    ASSERT_EQ(shortest(literal), test::naiveShortestDecimal(literal)) << literal;
  }
}

TEST(JsonNumber, EveryDoubleReadsBackFromWhatIsShown) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 300000; ++i) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    // Neighbours of powers of two have gaps of different widths on their two sides.
    if (i % 3 == 0) value = std::ldexp(1.0, static_cast<int>(bits % 2090) - 1070);
    if (i % 6 == 0) value = std::nextafter(value, bits % 2 == 0 ? 0.0 : HUGE_VAL);
    if (!std::isfinite(value) || value == 0) continue;
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.16e", value);
    const std::string shown = shortest(text.data());
    double back = 0;
    std::from_chars(shown.data(), shown.data() + shown.size(), back);
    ASSERT_EQ(back, value) << text.data();
    ASSERT_EQ(shortest(shown.find_first_of(".e") == std::string::npos ? shown + ".0" : shown),
              shown);
  }
}

TEST(JsonNumber, ShortDecimalsStayAsTheyAre) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 200000; ++i) {
    const std::uint64_t whole = random() % 100000;
    std::uint64_t fraction = random() % 1000000000;
    if (fraction % 10 == 0) ++fraction;
    std::string literal = std::to_string(whole) + "." + std::to_string(fraction);
    ASSERT_EQ(shortest(literal), literal);
  }
}

TEST(JsonNumber, ScansTheGrammarAndNoMore) {
  const std::vector<std::string> numbers = {
      "0",   "-0",   "10",   "1.5",  "-1.5e10",
      "0e0", "1E+2", "1e-2", "0.00", "123456789012345678901234567890"};
  for (const std::string& number : numbers) {
    const std::string text = number + "]";
    const json::NumberLiteral literal = json::scanNumber(text.data());
    ASSERT_NE(literal.end, nullptr) << number;
    EXPECT_EQ(std::string(literal.begin, literal.end), number);
    EXPECT_EQ(literal.isInteger, number.find_first_of(".eE") == std::string::npos) << number;
  }
  for (const std::string text : {"]", "-]", "+1]", ".5]", "01]", "-01]", "00.5]", "1.]", "1.e5]",
                                 "1e]", "1e+]", "1e-]", "-.5]", "-e1]", "NaN]", "Infinity]"}) {
    EXPECT_EQ(json::scanNumber(text.data()).end, nullptr) << text;
  }
}

}  // namespace
}  // namespace lumisk
