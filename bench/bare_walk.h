#pragma once

#include <cstdint>
#include <string>

namespace lumisk::bench {

/// The bytes allocated below a folder by nothing but the system calls that this takes, one after
/// the other: what is left of a walk's time when all else costs nothing. For short trees only.
std::int64_t bareWalk(const std::string& path);

}  // namespace lumisk::bench
