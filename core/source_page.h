#pragma once

#include <string>
#include <string_view>

#include "core/file_url.h"

namespace lumisk {

class Output;

/// The highlighter's name for the language of files with this extension (any case): "cpp" for "h".
/// An extension without a name of its own is its own name; without extension it is empty.
std::string highlightLanguage(std::string_view fileExtension);

/// The page that shows a file's text as source in the language of `fileExtension`.
void writeSourceHTML(Output& out, std::string_view content, const FileURL& fileURL,
                     std::string_view fileExtension, bool isDark);
std::string buildSourceHTML(std::string_view content, const FileURL& fileURL,
                            std::string_view fileExtension, bool isDark);

}  // namespace lumisk
