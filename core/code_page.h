#pragma once

#include <string>
#include <string_view>

namespace lumisk {

class Output;

// The page of every preview but Markdown: a body fragment in a document that loads the highlighter
// and carries its own palette. Builders write the start, then their fragment, then the end, so that
// no fragment is ever held on its own.

/// Everything before the fragment. `baseHref` is inserted as it is: it must be a URL string.
void appendCodePageStart(Output& out, std::string_view baseHref, bool isDark);
/// Everything after it.
void appendCodePageEnd(Output& out);
/// Size in bytes of start and end together.
std::size_t codePageFrameSize(std::string_view baseHref, bool isDark);

/// The whole page around a `fragment` of HTML.
std::string buildCodePage(std::string_view fragment, std::string_view baseHref, bool isDark);

}  // namespace lumisk
