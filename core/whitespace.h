#pragma once

#include <string_view>

namespace lumisk {

/// `text` (UTF-8) without the tabs and space separators (Unicode category Zs) at both ends. Line
/// breaks are no blanks.
std::string_view trimmedBlanks(std::string_view text);

}  // namespace lumisk
