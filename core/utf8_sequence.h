#pragma once

#include <cstddef>

namespace lumisk {

/// Length of the well-formed UTF-8 sequence at `at` (before `end`); 0 when there is none.
std::size_t utf8SequenceLength(const char* at, const char* end);

}  // namespace lumisk
