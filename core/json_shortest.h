#pragma once

#include <cstdint>

namespace lumisk::json {

/// Whether digits × 10^exponent is itself the shortest decimal that reads back as its double, and
/// of the shortest ones the closest to it. It answers from 128-bit estimates, which tell for nearly
/// every number that a program has printed; false may also mean that they cannot tell.
///
/// `digits` has 16 or 17 digits, the last of them not zero.
bool isSurelyShortest(std::uint64_t digits, std::int64_t exponent);

}  // namespace lumisk::json
