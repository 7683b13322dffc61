#pragma once

#include <string>
#include <string_view>

namespace lumisk {

/// `text` without the means to play with a terminal, which a file name may hold: control
/// characters, those of two bytes (U+0080 to U+009F) included, become "?".
std::string terminalText(std::string_view text);

/// The line in which a program says what is wrong: "lumisk: ", `sentence` as terminal text, and a
/// line feed.
std::string complaintLine(std::string_view sentence);

}  // namespace lumisk
