#pragma once

#include <string>
#include <string_view>

#include "core/file_url.h"

namespace lumisk {

class Output;

/// The page of a table file, its first row as the header.
///
/// Lines end at line feeds; lines of blanks alone are left out. A line is cut at every `separator`,
/// with no notion of quoting; double quotes and carriage returns are then taken off both ends of
/// each cell. Only angle brackets are escaped, so an entity in a cell shows as its character.
void writeTableHTML(Output& out, std::string_view content, const FileURL& fileURL,
                    std::string_view separator, bool isDark);
std::string buildTableHTML(std::string_view content, const FileURL& fileURL,
                           std::string_view separator, bool isDark);

}  // namespace lumisk
