#include <string>

#include "bench/builders.h"
#include "bench/corpora.h"
#include "core/markdown_page.h"

namespace lumisk::bench {

namespace {

constexpr const char* kBase = "file:///home/someone/notes/";

const RegisteredBuilder kMarkdownBuilder(
    {"markdown", asciiText,
     [](Output& out, std::string_view text) { writeMarkdownPage(out, text, kBase, false); },
     [](std::string_view text) { return buildMarkdownPage(text, kBase, false); }});

}  // namespace

}  // namespace lumisk::bench
