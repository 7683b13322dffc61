#include "random_json.h"

#include <array>
#include <string_view>

namespace lumisk::test {

namespace {

std::size_t below(std::mt19937& random, std::size_t bound) { return random() % bound; }

template <std::size_t N>
std::string_view oneOf(std::mt19937& random, const std::array<std::string_view, N>& choices) {
  return choices[below(random, N)];
}

std::string randomDigits(std::mt19937& random, std::size_t count) {
  std::string digits;
  // Runs of zeros and nines are where rounding and shortening happen.
  const std::size_t style = below(random, 4);
  for (std::size_t i = 0; i < count; ++i) {
    const bool isRun = style > 1 && below(random, 4) != 0;
    digits += isRun ? (style == 2 ? '0' : '9') : static_cast<char>('0' + below(random, 10));
  }
  return digits;
}

std::string randomBlanks(std::mt19937& random) {
  static constexpr std::array<std::string_view, 8> kBlanks = {
      "", "", "", " ", "\n", "\r\n\t", "\n                        ", "  "};
  return std::string(oneOf(random, kBlanks));
}

std::string randomString(std::mt19937& random) {
  static constexpr std::array<std::string_view, 22> kPieces = {
      "a",       "plain words",
      "<",       ">",
      "&",       "&amp;",
      "\\\"",    "\\\\",
      "\\/",     "\\n",
      "\\u0001", "/",
      "\\u00e9", "\\ud83d\\ude00",
      "é",       "漢字",
      "\u2028",  "\x7f",
      "\\u003c", "\\t",
      "\\u0022", "sixteen bytes at a time and more"};
  std::string text = "\"";
  for (std::size_t i = below(random, 6); i > 0; --i) text += oneOf(random, kPieces);
  return text + "\"";
}

std::string randomValue(std::mt19937& random, std::size_t levelsLeft) {
  static constexpr std::array<std::string_view, 3> kWords = {"true", "false", "null"};
  const std::size_t kind = below(random, levelsLeft == 0 ? 3 : 5);
  if (kind == 0) return std::string(oneOf(random, kWords));
  if (kind == 1) return randomNumber(random);
  if (kind == 2) return randomString(random);
  const bool isObject = kind == 3;
  std::string text = (isObject ? "{" : "[") + randomBlanks(random);
  for (std::size_t i = below(random, 5); i > 0; --i) {
    if (isObject) text += randomString(random) + randomBlanks(random) + ":" + randomBlanks(random);
    text += randomValue(random, levelsLeft - 1) + randomBlanks(random);
    if (i > 1) text += "," + randomBlanks(random);
  }
  return text + (isObject ? "}" : "]");
}

}  // namespace

std::string randomNumber(std::mt19937& random) {
  static constexpr std::array<std::string_view, 4> kMarks = {"e", "E", "e+", "E-"};
  static constexpr std::array<std::string_view, 3> kLeads = {"0.", "0.0000", "0.000000000000"};
  std::string text = below(random, 4) == 0 ? "-" : "";
  if (below(random, 3) == 0) {
    text += oneOf(random, kLeads);
    text += randomDigits(random, 1 + below(random, 19));
  } else {
    text += static_cast<char>('1' + below(random, 9));
    text += randomDigits(random, below(random, 19));
    if (below(random, 3) != 0) text += "." + randomDigits(random, 1 + below(random, 19));
  }
  if (below(random, 3) == 0) {
    const std::size_t bound = below(random, 3) == 0 ? 345 : 25;
    text += oneOf(random, kMarks);
    text += std::to_string(below(random, bound));
  }
  return text;
}

std::string randomJson(std::mt19937& random) {
  return randomBlanks(random) + "[" + randomBlanks(random) + randomValue(random, 5) +
         randomBlanks(random) + "]" + randomBlanks(random);
}

}  // namespace lumisk::test
