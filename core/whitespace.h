#pragma once

#include <cstddef>
#include <string_view>

namespace lumisk {

// A blank is a tab or a space separator (Unicode category Zs). Line breaks are no blanks.

/// `text` (UTF-8) without the blanks at both ends.
std::string_view trimmedBlanks(std::string_view text);

/// Size in bytes of the blank that `text` starts with; 0 when it starts with none.
std::size_t leadingBlankSize(std::string_view text);

}  // namespace lumisk
