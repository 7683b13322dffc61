#pragma once

#include <string>
#include <string_view>

#include "core/file_url.h"

namespace lumisk {

class Output;

/// The page of a JSON file: laid out when `formatted` and when it is JSON, else its own text. The
/// last component of `fileURL` is dropped to give the page's base. Never fails.
void writeJSONHTML(Output& out, std::string_view content, const FileURL& fileURL, bool isDark,
                   bool formatted);
std::string buildJSONHTML(std::string_view content, const FileURL& fileURL, bool isDark,
                          bool formatted);

/// The page of a JSON Lines file: one block a record when `formatted`, else its own text in one.
/// A line that is no JSON is shown as it stands in a block like the others.
void writeJSONLHTML(Output& out, std::string_view content, const FileURL& fileURL, bool isDark,
                    bool formatted);
std::string buildJSONLHTML(std::string_view content, const FileURL& fileURL, bool isDark,
                           bool formatted);

}  // namespace lumisk
