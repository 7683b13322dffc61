#pragma once

#include <cstdint>
#include <string>

namespace lumisk {

/// A count of bytes for people, in steps of 1024 and the same in every locale: "1023 B", "2 KB",
/// "1.5 MB", "2048.0 GB". Kilobytes have no decimals, the larger units one. The unit is chosen
/// before rounding, so 1,048,575 is "1024 KB". Callable on any thread.
std::string formatFileSize(std::int64_t bytes);

}  // namespace lumisk
