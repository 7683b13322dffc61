#pragma once

#include <cstddef>
#include <string_view>

namespace lumisk {

class Output;

// The fixed text of the pages stands in real files (core/pages/), where editors colour it and
// linters read it. The build embeds each as a list of literal pieces and named slots; an unknown
// slot name fails to compile.

/// The host that serves the pages' client libraries.
extern const std::string_view kCdnHost;

/// What the appearance decides in a page.
struct Palette {
  std::string_view text;
  std::string_view pageBackground;
  std::string_view codeBackground;
  std::string_view quoteText;
  std::string_view rule;
  std::string_view zebraRow;
  std::string_view accent;
  std::string_view carouselBorder;
  std::string_view carouselDot;
  std::string_view codeTheme;     ///< the end of the highlighter's style sheet's name
  std::string_view diagramTheme;  ///< the diagram library's word for the appearance

  static const Palette& of(bool isDark);
};

enum class PageTemplate { CodePageStart, CodePageEnd, MarkdownPage };

/// What the slots of a page are filled with, each inserted as it is.
struct PageSlots {
  const Palette& palette;
  std::string_view baseHref = {};
  std::string_view source = {};
};

void appendPageTemplate(Output& out, PageTemplate page, const PageSlots& slots);

/// Size in bytes of what `appendPageTemplate` writes.
std::size_t pageTemplateSize(PageTemplate page, const PageSlots& slots);

}  // namespace lumisk
