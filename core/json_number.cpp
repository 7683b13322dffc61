#include "core/json_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>

#include "core/json_block.h"
#include "core/json_shortest.h"

namespace lumisk::json {

namespace {

/// A double is told apart from its neighbours by this many significant digits at most, ...
constexpr std::size_t kMaxSignificantDigits = 17;
/// ... and decimals of this many or fewer are told apart by their doubles, as long as these have
/// their full precision.
constexpr std::size_t kSafeSignificantDigits = 15;
constexpr std::int64_t kSafeExponent = 307;

/// The exponent form is used below 1e-4 and from 1e16 on.
constexpr std::int64_t kMinFixedExponent = -4;
constexpr std::int64_t kMaxFixedExponent = 15;

/// Larger than any exponent that matters, smaller than any that overflows a sum.
constexpr std::int64_t kExponentLimit = std::int64_t{1} << 48;

/// d.ddd × 10^exponent, the first digit not zero; no digits for zero.
struct Decimal {
  bool isNegative = false;
  std::size_t count = 0;
  std::array<char, kMaxSignificantDigits> digits{};
  std::int64_t exponent = 0;
};

const char* skipDigits(const char* in) {
  while (isOfKind(*in, kDigit)) ++in;
  return in;
}

std::int64_t parseExponent(std::string_view text) {
  const bool isNegative = text.front() == '-';
  if (text.front() == '-' || text.front() == '+') text.remove_prefix(1);
  std::int64_t value = 0;
  for (const char digit : text) value = std::min(value * 10 + (digit - '0'), kExponentLimit);
  return isNegative ? -value : value;
}

/// Nothing when the digits are too many.
std::optional<Decimal> parseDecimal(std::string_view literal) {
  Decimal decimal;
  decimal.isNegative = literal.front() == '-';
  if (decimal.isNegative) literal.remove_prefix(1);
  const std::size_t mark = std::min(literal.find_first_of("eE"), literal.size());
  std::int64_t digitsBeforePoint = -1;
  std::int64_t position = 0;
  std::int64_t firstDigit = 0;
  for (const char byte : literal.substr(0, mark)) {
    if (byte == '.') {
      digitsBeforePoint = position;
      continue;
    }
    if (decimal.count == 0) firstDigit = position;
    if (decimal.count == kMaxSignificantDigits) return std::nullopt;
    if (decimal.count > 0 || byte != '0') decimal.digits[decimal.count++] = byte;
    ++position;
  }
  if (digitsBeforePoint < 0) digitsBeforePoint = position;
  decimal.exponent = digitsBeforePoint - firstDigit - 1;
  if (mark < literal.size()) decimal.exponent += parseExponent(literal.substr(mark + 1));
  return decimal;
}

void dropTrailingZeros(Decimal& decimal) {
  while (decimal.count > 0 && decimal.digits[decimal.count - 1] == '0') --decimal.count;
}

char* append(char* out, const char* from, std::size_t size) {
  std::memcpy(out, from, size);
  return out + size;
}

char* appendZeros(char* out, std::int64_t count) {
  for (; count > 0; --count) *out++ = '0';
  return out;
}

char* writeScientific(const Decimal& decimal, char* out) {
  *out++ = decimal.digits[0];
  if (decimal.count > 1) {
    *out++ = '.';
    out = append(out, decimal.digits.data() + 1, decimal.count - 1);
  }
  *out++ = 'e';
  *out++ = decimal.exponent < 0 ? '-' : '+';
  const std::int64_t magnitude = std::abs(decimal.exponent);
  if (magnitude < 10) *out++ = '0';
  return std::to_chars(out, out + 3, magnitude).ptr;
}

char* writeFixed(const Decimal& decimal, char* out) {
  if (decimal.exponent < 0) {
    out = appendZeros(append(out, "0.", 2), -decimal.exponent - 1);
    return append(out, decimal.digits.data(), decimal.count);
  }
  const auto digitsBeforePoint = static_cast<std::size_t>(decimal.exponent) + 1;
  const std::size_t before = std::min(decimal.count, digitsBeforePoint);
  out = append(out, decimal.digits.data(), before);
  if (decimal.count <= digitsBeforePoint) {
    return appendZeros(out, static_cast<std::int64_t>(digitsBeforePoint - decimal.count));
  }
  *out++ = '.';
  return append(out, decimal.digits.data() + before, decimal.count - before);
}

char* writeDecimal(const Decimal& decimal, char* out) {
  if (decimal.isNegative) *out++ = '-';
  if (decimal.count == 0) {
    *out++ = '0';
    return out;
  }
  const bool isFixed =
      decimal.exponent >= kMinFixedExponent && decimal.exponent <= kMaxFixedExponent;
  return isFixed ? writeFixed(decimal, out) : writeScientific(decimal, out);
}

bool isShortest(const Decimal& decimal) {
  if (decimal.count <= kSafeSignificantDigits) return std::abs(decimal.exponent) <= kSafeExponent;
  std::uint64_t digits = 0;
  for (std::size_t i = 0; i < decimal.count; ++i) {
    digits = digits * 10 + static_cast<std::uint64_t>(decimal.digits[i] - '0');
  }
  return isSurelyShortest(digits, decimal.exponent - static_cast<std::int64_t>(decimal.count) + 1);
}

/// The shortest decimal with the double of `decimal`, which is not zero; nothing when a double
/// cannot hold its magnitude.
std::optional<Decimal> shortened(Decimal decimal) {
  if (std::abs(decimal.exponent) > 400) return std::nullopt;
  decimal.isNegative = false;
  std::array<char, kMaxDecimalSize> text;  // NOLINT(*-member-init): written before it is read
  const char* const textEnd = writeScientific(decimal, text.data());
  double value = 0;
  const std::from_chars_result read = std::from_chars(text.data(), textEnd, value);
  if (read.ec != std::errc() || value == 0 || std::isinf(value)) return std::nullopt;
  char* const end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific)
          .ptr;
  return parseDecimal({text.data(), static_cast<std::size_t>(end - text.data())});
}

}  // namespace

NumberLiteral scanNumber(const char* in) {
  NumberLiteral literal = {in, nullptr, true};
  if (*in == '-') ++in;
  const char* const integer = in;
  in = skipDigits(in);
  if (in == integer || (*integer == '0' && in - integer > 1)) return literal;
  if (*in == '.') {
    literal.isInteger = false;
    const char* const fraction = ++in;
    in = skipDigits(in);
    if (in == fraction) return literal;
  }
  if (*in == 'e' || *in == 'E') {
    literal.isInteger = false;
    ++in;
    if (*in == '+' || *in == '-') ++in;
    const char* const exponent = in;
    in = skipDigits(in);
    if (in == exponent) return literal;
  }
  literal.end = in;
  return literal;
}

char* writeShortestDecimal(std::string_view literal, char* out) {
  std::optional<Decimal> decimal = parseDecimal(literal);
  if (!decimal) return nullptr;
  dropTrailingZeros(*decimal);
  if (decimal->count != 0 && !isShortest(*decimal)) {
    const bool isNegative = decimal->isNegative;
    decimal = shortened(*decimal);
    if (!decimal) return nullptr;
    decimal->isNegative = isNegative;
  }
  return writeDecimal(*decimal, out);
}

}  // namespace lumisk::json
