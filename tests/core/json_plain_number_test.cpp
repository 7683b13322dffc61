#include "core/json_plain_number.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/json_block.h"
#include "json_testing.h"
#include "random_json.h"

namespace lumisk::json {
namespace {

/// How `literal` is shown, when that is plain to see.
template <typename Block>
std::string shown(const std::string& literal) {
  const std::string text = literal + "," + std::string(40, '7');
  const PlainNumber number = plainNumber<Block>(text.data());
  if (number.end == nullptr) return "not plain";
  EXPECT_EQ(number.end, text.data() + literal.size()) << literal;
  return text.substr(0, number.shownSize);
}

void expectShown(const std::string& literal, const std::string& expected) {
  EXPECT_EQ(shown<NativeBlock>(literal), expected) << literal;
  EXPECT_EQ(shown<PortableBlock>(literal), expected) << literal;
}

TEST(JsonPlainNumber, IntegersAndShortDecimalsArePlain) {
  for (const std::string literal :
       {"0", "-0", "7", "-12", "1234567890123456789012345678901", "1.5", "-0.25", "0.0001",
        "12345678901234.5", "12345678.12345678", "0.12345678901234", "0.30000000000000004"}) {
    expectShown(literal, literal);
  }
}

TEST(JsonPlainNumber, ZerosAtTheEndAreLeftOut) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"1.0", "1"},   {"-0.0", "-0"},     {"0.00", "0"},          {"2.50", "2.5"},
      {"10.0", "10"}, {"100.000", "100"}, {"0.000100", "0.0001"}, {"1.00000000000000", "1"},
  };
  for (const auto& [literal, expected] : rows) expectShown(literal, expected);
}

TEST(JsonPlainNumber, TheRestIsNot) {
  for (const std::string literal : {"",
                                    "-",
                                    "01",
                                    "-01",
                                    "00",
                                    "1.",
                                    "-1.",
                                    ".5",
                                    "1e5",
                                    "1E5",
                                    "1.5e5",
                                    "1.5E5",
                                    "0.00001",
                                    "0.0000",
                                    "123456789012345.6",
                                    "1.0000000000000000000",
                                    "12345678901234567.5",
                                    "0.10000000000000001",
                                    "12345678901234567890123456789012",
                                    "0.3000000000000000444089209850062616"}) {
    expectShown(literal, "not plain");
  }
}

TEST(JsonPlainNumber, AgreesWithASearchThroughAllLengths) {
  std::mt19937 random(8);
  int plain = 0;
  for (int i = 0; i < 200000; ++i) {
    const std::string literal = test::randomNumber(random);
    const std::string result = shown<NativeBlock>(literal);
    ASSERT_EQ(result, shown<PortableBlock>(literal)) << literal;
    if (result == "not plain") continue;
    ++plain;
    const bool isInteger = literal.find('.') == std::string::npos;
    ASSERT_EQ(result, isInteger ? literal : test::naiveShortestDecimal(literal)) << literal;
  }
  EXPECT_GT(plain, 50000);
}

TEST(JsonPlainNumber, AgreesOnPrintedDoubles) {
  std::mt19937_64 random(9);
  for (int i = 0; i < 100000; ++i) {
    const double unit = static_cast<double>(random() >> 11) * 0x1p-53;
    const double scale = std::vector<double>{1, 0.01, 360, 90000, 1e7, 1e9}[random() % 6];
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", static_cast<int>(random() % 19), unit * scale);
    const std::string literal = text;
    const std::string result = shown<NativeBlock>(literal);
    if (result == "not plain" || literal.find('.') == std::string::npos) continue;
    ASSERT_EQ(result, test::naiveShortestDecimal(literal)) << literal;
  }
}

}  // namespace
}  // namespace lumisk::json
