#include "core/json_page.h"

#include "core/code_page.h"
#include "core/escape.h"
#include "core/json_format.h"
#include "core/output.h"
#include "core/shown_json.h"

namespace lumisk {

namespace {

constexpr std::string_view kBlockStart = "<pre><code class=\"language-json\">";
constexpr std::string_view kBlockEnd = "</code></pre>";

template <typename AppendText>
void writePage(Output& out, std::string_view baseHref, bool isDark, AppendText appendText) {
  appendCodePageStart(out, baseHref, isDark);
  out.append(kBlockStart);
  appendText(out);
  out.append(kBlockEnd);
  appendCodePageEnd(out);
}

/// The page as a string, in one allocation.
template <typename AppendText>
std::string buildPage(std::string_view baseHref, bool isDark, std::size_t textSize,
                      AppendText appendText) {
  StringOutput out(codePageFrameSize(baseHref, isDark) + kBlockStart.size() + textSize +
                   kBlockEnd.size());
  writePage(out, baseHref, isDark, appendText);
  return out.take();
}

std::string baseOf(const FileURL& fileURL) {
  return fileURL.deletingLastPathComponent().absoluteString();
}

}  // namespace

void writeJSONHTML(Output& out, std::string_view content, const FileURL& fileURL, bool isDark,
                   bool formatted) {
  writePage(out, baseOf(fileURL), isDark, [&](Output& text) {
    if (!formatted) return appendEscaped(text, content, Escaping::Html);
    if (text.beginTrial()) {
      const bool isJson = appendFormattedJson(text, content);
      text.endTrial(isJson);
      if (!isJson) appendEscaped(text, content, Escaping::Html);
      return;
    }
    ShownJson shown;
    shown.set(content);
    shown.appendTo(text);
  });
}

std::string buildJSONHTML(std::string_view content, const FileURL& fileURL, bool isDark,
                          bool formatted) {
  const std::string baseHref = baseOf(fileURL);
  if (!formatted) {
    return buildPage(baseHref, isDark, escapedSize(content, Escaping::Html),
                     [&](Output& text) { appendEscaped(text, content, Escaping::Html); });
  }
  ShownJson shown;
  shown.set(content);
  return buildPage(baseHref, isDark, shown.size(), [&](Output& text) { shown.appendTo(text); });
}

}  // namespace lumisk
