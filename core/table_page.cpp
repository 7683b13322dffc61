#include "core/table_page.h"

#include "core/code_page.h"
#include "core/output.h"
#include "core/table_lines.h"
#include "core/table_rows.h"

namespace lumisk {

namespace {

constexpr std::string_view kTableStart = "<div style=\"overflow:auto\"><table>";
constexpr std::string_view kTableEnd = "</table></div>";
constexpr std::string_view kEmptyFile = "<p>Empty file.</p>";

void write(Output& out, std::string_view content, std::string_view separator,
           std::string_view baseHref, bool isDark) {
  appendCodePageStart(out, baseHref, isDark);
  const char* end = content.data() + content.size();
  if (firstKeptLine(content.data(), end) == end) {
    out.append(kEmptyFile);
  } else {
    out.append(kTableStart);
    writeTableRows(out, content, separator);
    out.append(kTableEnd);
  }
  appendCodePageEnd(out);
}

}  // namespace

void writeTableHTML(Output& out, std::string_view content, const FileURL& fileURL,
                    std::string_view separator, bool isDark) {
  const std::string base = fileURL.deletingLastPathComponent().absoluteString();
  write(out, content, separator, base, isDark);
}

std::string buildTableHTML(std::string_view content, const FileURL& fileURL,
                           std::string_view separator, bool isDark) {
  const std::string base = fileURL.deletingLastPathComponent().absoluteString();
  // What is reserved and not written is not touched, so it costs no memory.
  StringOutput out(codePageFrameSize(base, isDark) + kTableStart.size() + kTableEnd.size() +
                   kEmptyFile.size() + largestTableRowsSize(content, separator));
  write(out, content, separator, base, isDark);
  return out.take();
}

}  // namespace lumisk
