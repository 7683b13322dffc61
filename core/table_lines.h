#pragma once

namespace lumisk {

/// The start of the first line in [at, end) that is kept in a table, that is, holds more than
/// blanks; `end` when there is none. `at` is the start of a line.
const char* firstKeptLine(const char* at, const char* end);

}  // namespace lumisk
