#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace lumisk {

/// What everything below the folder at `path` occupies on disk, in bytes: the allocated blocks of
/// all that is not a folder, at any depth, hidden entries and other file systems included, symbolic
/// links not followed. A file with several names counts once for each. What cannot be read, or
/// vanishes while it is walked, counts nothing; so does a folder that cannot be opened.
///
/// Works on up to `maxThreads` threads, the caller's always included; for a small tree on the
/// caller's alone. A sum beyond the largest signed 64-bit number ends the program.
std::int64_t allocatedSizeBelow(const std::string& path, std::size_t maxThreads);

}  // namespace lumisk
