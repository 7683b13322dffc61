#include "core/code_page.h"
#include "core/escape.h"
#include "core/json_page.h"
#include "core/line_break.h"
#include "core/output.h"
#include "core/shown_json.h"
#include "core/whitespace.h"

namespace lumisk {

namespace {

constexpr std::string_view kBlockStart = R"(<pre><code class="language-json">)";
constexpr std::string_view kRecordStart =
    R"(<pre style="margin-bottom: 8px;"><code class="language-json">)";
constexpr std::string_view kBlockEnd = "</code></pre>";
constexpr std::string_view kEmptyFile = "<p>Empty file.</p>";

/// Calls `visit(line)` for each line of `content` with something on it, without blanks at its ends.
template <typename Visit>
void forEachRecord(std::string_view content, Visit visit) {
  for (std::size_t at = 0; at < content.size();) {
    const LineBreak lineBreak = findLineBreak(content, at);
    const std::string_view record = trimmedBlanks(content.substr(at, lineBreak.at - at));
    if (!record.empty()) visit(record);
    at = lineBreak.at + lineBreak.size;
  }
}

void appendRecords(Output& out, std::string_view content) {
  ShownJson shown;
  bool isEmpty = true;
  forEachRecord(content, [&](std::string_view record) {
    shown.set(record, content);
    out.append(kRecordStart);
    shown.appendTo(out);
    out.append(kBlockEnd);
    isEmpty = false;
  });
  if (isEmpty) out.append(kEmptyFile);
}

void appendSource(Output& out, std::string_view content) {
  out.append(kBlockStart);
  appendEscaped(out, content, Escaping::Html);
  out.append(kBlockEnd);
}

}  // namespace

void writeJSONLHTML(Output& out, std::string_view content, const FileURL& fileURL, bool isDark,
                    bool formatted) {
  appendCodePageStart(out, fileURL.deletingLastPathComponent().absoluteString(), isDark);
  formatted ? appendRecords(out, content) : appendSource(out, content);
  appendCodePageEnd(out);
}

std::string buildJSONLHTML(std::string_view content, const FileURL& fileURL, bool isDark,
                           bool formatted) {
  // Only writing the page tells its size; with it, the page takes one allocation.
  DraftOutput draft;
  writeJSONLHTML(draft, content, fileURL, isDark, formatted);
  if (draft.isComplete()) return std::string(draft.text());
  StringOutput out(draft.size());
  writeJSONLHTML(out, content, fileURL, isDark, formatted);
  return out.take();
}

}  // namespace lumisk
