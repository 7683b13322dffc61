#pragma once

#include <functional>
#include <string>

namespace lumisk::bench {

// RapidJSON's reader, event by event, into its pretty writer, into its own buffer, which is kept
// from run to run: it formats like ours, and does not escape. `text` must outlive the result.

/// As the package comes.
std::function<void()> rapidJson(const std::string& text);
/// With its vector instructions switched on.
std::function<void()> rapidJsonSse2(const std::string& text);

}  // namespace lumisk::bench
