#include "core/markdown_page.h"

#include "core/output.h"
#include "core/page_template.h"

namespace lumisk {

void writeMarkdownPage(Output& out, std::string_view source, std::string_view baseHref,
                       bool isDark) {
  appendPageTemplate(out, PageTemplate::MarkdownPage,
                     {.palette = Palette::of(isDark), .baseHref = baseHref, .source = source});
}

std::string buildMarkdownPage(std::string_view source, std::string_view baseHref, bool isDark) {
  const PageSlots slots = {.palette = Palette::of(isDark), .baseHref = baseHref, .source = source};
  StringOutput out(pageTemplateSize(PageTemplate::MarkdownPage, slots));
  appendPageTemplate(out, PageTemplate::MarkdownPage, slots);
  return out.take();
}

}  // namespace lumisk
