#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lumisk {

/// Where the person's own data files lie: $XDG_DATA_HOME, or ~/.local/share without it. A relative
/// value is ignored, as if it were not set. Nothing when there is no home either.
std::optional<std::string> dataHome();

/// `dataHome` and, after it, the folders of data for everybody, in the order in which they are
/// searched.
std::vector<std::string> dataDirectories();

}  // namespace lumisk
