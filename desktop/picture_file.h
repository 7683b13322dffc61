#pragma once

#include <optional>
#include <string>

namespace lumisk::desktop {

/// Why no picture of the item at `input` may be written to `output`, as a sentence; nothing when it
/// may. A picture replaces a picture, an empty file or none: whoever names two documents by mistake
/// ("*.md") loses neither.
std::optional<std::string> whyNotWritable(const std::string& input, const std::string& output);

}  // namespace lumisk::desktop
