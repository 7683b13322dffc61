#include "core/code_page.h"

#include "core/output.h"
#include "core/page_template.h"

namespace lumisk {

void appendCodePageStart(Output& out, std::string_view baseHref, bool isDark) {
  appendPageTemplate(out, PageTemplate::CodePageStart,
                     {.palette = Palette::of(isDark), .baseHref = baseHref});
}

void appendCodePageEnd(Output& out) {
  appendPageTemplate(out, PageTemplate::CodePageEnd, {.palette = Palette::of(false)});
}

std::size_t codePageFrameSize(std::string_view baseHref, bool isDark) {
  const PageSlots slots = {.palette = Palette::of(isDark), .baseHref = baseHref};
  return pageTemplateSize(PageTemplate::CodePageStart, slots) +
         pageTemplateSize(PageTemplate::CodePageEnd, slots);
}

std::string buildCodePage(std::string_view fragment, std::string_view baseHref, bool isDark) {
  StringOutput out(codePageFrameSize(baseHref, isDark) + fragment.size());
  appendCodePageStart(out, baseHref, isDark);
  out.append(fragment);
  appendCodePageEnd(out);
  return out.take();
}

}  // namespace lumisk
