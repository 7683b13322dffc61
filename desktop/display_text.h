#pragma once

#include <string>
#include <string_view>

namespace lumisk::desktop {

/// `text` (any bytes) as text that the toolkit can show: what is no UTF-8 as the replacement
/// character, NUL as its symbol.
std::string displayText(std::string_view text);

/// The same on one line: line ends as their symbol too.
std::string displayLine(std::string_view text);

/// The same for a window's title, which somebody else may have chosen: at most the first kilobyte,
/// with an ellipsis if that is not all, and other control characters as the replacement character.
std::string displayTitle(std::string_view text);

}  // namespace lumisk::desktop
