#pragma once

#include <cstddef>
#include <string_view>

namespace lumisk::json {

/// A number as it is written in a text.
struct NumberLiteral {
  const char* begin;
  const char* end;  ///< null when what stands at `begin` is no number
  bool isInteger;   ///< without fraction and exponent
};

/// The longest number literal at `in`, which may only be called where a byte that cannot belong to
/// a number follows.
NumberLiteral scanNumber(const char* in);

/// More than any decimal that `writeShortestDecimal` writes: sign, point, 17 digits, exponent.
inline constexpr std::size_t kMaxDecimalSize = 32;

/// Writes the value of `literal`, which has a fraction or an exponent, as the shortest decimal that
/// reads back as the same double, and returns its end:
///
///     3.0 → 3    -0.0 → -0    2.50 → 2.5    1E-7 → 1e-07    1e2 → 100    1e16 → 1e+16
///
/// Null, and nothing is written, when that could lose what the literal says: it has more than 17
/// significant digits (trailing zeros are significant, leading ones are not), or its magnitude is
/// too large for a double or so small that only zero is left.
char* writeShortestDecimal(std::string_view literal, char* out);

}  // namespace lumisk::json
