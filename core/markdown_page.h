#pragma once

#include <string>
#include <string_view>

namespace lumisk {

class Output;

/// The page that carries a Markdown document and turns it into a finished one when it is shown.
///
/// The source stands in the page byte for byte, in a script element that does not run; nothing in
/// it is escaped, so "</script" in a document ends the element early. `baseHref` is the URL string
/// of the folder that holds the document.
void writeMarkdownPage(Output& out, std::string_view source, std::string_view baseHref,
                       bool isDark);
std::string buildMarkdownPage(std::string_view source, std::string_view baseHref, bool isDark);

}  // namespace lumisk
