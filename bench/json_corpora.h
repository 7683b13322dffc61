#pragma once

#include <cstddef>
#include <string>

namespace lumisk::bench {

// Generated JSON of about `size` bytes, the same each time.

/// Articles: long strings with some escapes, some markup and some letters beyond ASCII.
std::string textJson(std::size_t size);
/// Measurements: integers and decimals of up to 15 digits.
std::string numberJson(std::size_t size);
/// Coordinates as programs print them, in full precision: 16 and 17 digits.
std::string preciseNumberJson(std::size_t size);
/// Trees of small objects and arrays, some 30 levels deep.
std::string deepJson(std::size_t size);
/// Trees laid out with four blanks a level.
std::string indentedJson(std::size_t size);
/// Log records of some 200 bytes: one array of them, ...
std::string recordJson(std::size_t size);
/// ... and the same records a line each.
std::string recordLines(std::size_t size);

}  // namespace lumisk::bench
