#include "core/source_page.h"

#include "core/code_page.h"
#include "core/escape.h"
#include "core/lowercase.h"
#include "core/output.h"
#include "core/utf8.h"

namespace lumisk {

namespace {

struct LanguageOfExtension {
  std::string_view extension;
  std::string_view language;
};

// Only extensions that are not themselves a name or alias the highlighter knows.
constexpr LanguageOfExtension kLanguages[] = {
    {"js", "javascript"}, {"py", "python"}, {"rb", "ruby"},   {"rs", "rust"},       {"cpp", "cpp"},
    {"h", "cpp"},         {"hpp", "cpp"},   {"java", "java"}, {"ts", "typescript"}, {"sh", "bash"},
    {"yml", "yaml"},      {"kt", "kotlin"}, {"cs", "csharp"}, {"m", "objectivec"},
};

// The opening of the block: `<pre><code class="language-cpp">`, or without a language
// `<pre><code >`, blank included, for which the highlighter guesses.
std::string blockStart(std::string_view fileExtension) {
  const std::string language = highlightLanguage(fileExtension);
  if (language.empty()) return "<pre><code >";
  return "<pre><code class=\"language-" + language + "\">";
}

constexpr std::string_view kBlockEnd = "</code></pre>";

void write(Output& out, std::string_view content, std::string_view baseHref, std::string_view start,
           bool isDark) {
  appendCodePageStart(out, baseHref, isDark);
  out.append(start);
  appendEscaped(out, content, Escaping::Html);
  out.append(kBlockEnd);
  appendCodePageEnd(out);
}

}  // namespace

std::string highlightLanguage(std::string_view fileExtension) {
  // An extension is bytes of a file name; the page is text.
  std::string extension = lowercased(withReplacementCharacters(fileExtension));
  for (const LanguageOfExtension& row : kLanguages) {
    if (row.extension == extension) return std::string(row.language);
  }
  return extension;
}

void writeSourceHTML(Output& out, std::string_view content, const FileURL& fileURL,
                     std::string_view fileExtension, bool isDark) {
  const std::string base = fileURL.deletingLastPathComponent().absoluteString();
  write(out, content, base, blockStart(fileExtension), isDark);
}

std::string buildSourceHTML(std::string_view content, const FileURL& fileURL,
                            std::string_view fileExtension, bool isDark) {
  const std::string base = fileURL.deletingLastPathComponent().absoluteString();
  const std::string start = blockStart(fileExtension);
  StringOutput out(codePageFrameSize(base, isDark) + start.size() +
                   escapedSize(content, Escaping::Html) + kBlockEnd.size());
  write(out, content, base, start, isDark);
  return out.take();
}

}  // namespace lumisk
