#include "core/lowercase.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <vector>

#include "core/utf8.h"

namespace lumisk {

namespace {

struct LowercaseRange {
  char32_t first;
  char32_t last;
  std::uint32_t stride;
  std::int32_t distance;
};

constexpr LowercaseRange kRanges[] = {
#include "core/lowercase_table.inc"
};

constexpr char32_t kCapitalSigma = 0x3A3;
constexpr char32_t kSmallFinalSigma = 0x3C2;
constexpr char32_t kSmallSigma = 0x3C3;
constexpr char32_t kCapitalIWithDot = 0x130;
constexpr char32_t kCombiningDotAbove = 0x307;

const LowercaseRange* rangeOf(char32_t point) {
  const auto* range = std::lower_bound(
      std::begin(kRanges), std::end(kRanges), point,
      [](const LowercaseRange& candidate, char32_t value) { return candidate.last < value; });
  if (range == std::end(kRanges) || point < range->first) return nullptr;
  return (point - range->first) % range->stride == 0 ? range : nullptr;
}

char32_t simpleLowercase(char32_t point) {
  if (point < 0x80) return point >= U'A' && point <= U'Z' ? point + 0x20 : point;
  const LowercaseRange* range = rangeOf(point);
  return range ? static_cast<char32_t>(static_cast<std::int64_t>(point) + range->distance) : point;
}

bool isLowercaseLetter(char32_t point) {
  if (point < 0x80) return point >= U'a' && point <= U'z';
  // Lower-case letters without a capital are few and rare; a letter of the scripts that have case
  // is what the rule for sigma asks for.
  for (const LowercaseRange& range : kRanges) {
    const auto origin = static_cast<char32_t>(static_cast<std::int64_t>(point) - range.distance);
    if (origin >= range.first && origin <= range.last &&
        (origin - range.first) % range.stride == 0) {
      return true;
    }
  }
  return point == kSmallFinalSigma;
}

bool isCased(char32_t point) { return simpleLowercase(point) != point || isLowercaseLetter(point); }

// Marks and word-inner signs, which the rule for sigma looks through (property Case_Ignorable; of
// the combining marks the general and Greek ones).
bool isCaseIgnorable(char32_t point) {
  return point == U'\'' || point == U'.' || point == U':' || point == U'^' || point == U'`' ||
         point == 0xAD || point == 0xB7 || point == 0x2019 || (point >= 0x300 && point <= 0x36F) ||
         point == 0x387;
}

bool isAfterLetter(const std::vector<char32_t>& text, std::size_t at) {
  while (at > 0 && isCaseIgnorable(text[at - 1])) --at;
  return at > 0 && isCased(text[at - 1]);
}

bool isBeforeLetter(const std::vector<char32_t>& text, std::size_t at) {
  ++at;
  while (at < text.size() && isCaseIgnorable(text[at])) ++at;
  return at < text.size() && isCased(text[at]);
}

}  // namespace

std::string lowercased(std::string_view text) {
  std::vector<char32_t> points;
  points.reserve(text.size());
  forEachCodePoint(text, [&](char32_t point, std::string_view) { points.push_back(point); });

  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < points.size(); ++at) {
    const char32_t point = points[at];
    if (point == kCapitalSigma) {
      const bool endsWord = isAfterLetter(points, at) && !isBeforeLetter(points, at);
      appendUtf8(result, endsWord ? kSmallFinalSigma : kSmallSigma);
    } else if (point == kCapitalIWithDot) {
      appendUtf8(result, U'i');
      appendUtf8(result, kCombiningDotAbove);
    } else {
      appendUtf8(result, simpleLowercase(point));
    }
  }
  return result;
}

}  // namespace lumisk
