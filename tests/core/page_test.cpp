// Whole pages against expected files, byte for byte. Inputs and pages stand side by side in
// tests/data/pages.

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <string_view>

#include "core/code_page.h"
#include "core/file_url.h"
#include "core/json_page.h"
#include "core/markdown_page.h"
#include "core/source_page.h"
#include "core/table_page.h"
#include "support/files.h"
#include "support/generated_text.h"

namespace lumisk {
namespace {

using test::readAll;

const std::filesystem::path kPages = std::filesystem::path(LUMISK_TEST_DATA) / "pages";

using Builder = std::string (*)(const std::string& text, const FileURL& url, bool isDark);

std::string source(const std::string& text, const FileURL& url, bool isDark) {
  return buildSourceHTML(text, url, url.pathExtension(), isDark);
}
std::string commaTable(const std::string& text, const FileURL& url, bool isDark) {
  return buildTableHTML(text, url, ",", isDark);
}
std::string tabTable(const std::string& text, const FileURL& url, bool isDark) {
  return buildTableHTML(text, url, "\t", isDark);
}
template <bool formatted>
std::string json(const std::string& text, const FileURL& url, bool isDark) {
  return buildJSONHTML(text, url, isDark, formatted);
}
template <bool formatted>
std::string jsonLines(const std::string& text, const FileURL& url, bool isDark) {
  return buildJSONLHTML(text, url, isDark, formatted);
}

struct PageCase {
  const char* input;
  const char* form;  // between the input's name and the appearance in the expected file's
  Builder build;
};

constexpr PageCase kCases[] = {
    {"source.py", "", source},
    {"Makefile", "", source},
    {"empty.txt", "", source},
    {"people.csv", "", commaTable},
    {"people.tsv", "", tabTable},
    {"blank.csv", "", commaTable},
    {"document.json", "", json<true>},
    {"document.json", ".text", json<false>},
    {"broken.json", "", json<true>},
    {"records.jsonl", ".formatted", jsonLines<true>},
    {"records.jsonl", ".text", jsonLines<false>},
};

TEST(Page, EqualsItsExpectedFileInBothAppearances) {
  const FileURL folder = FileURL::fromPath("/home/me/a b/");
  for (const PageCase& row : kCases) {
    for (const bool isDark : {false, true}) {
      const std::string appearance = isDark ? ".dark" : ".light";
      SCOPED_TRACE(row.input + std::string(row.form) + appearance);
      const std::string page =
          row.build(readAll(kPages / row.input), folder.appendingPathComponent(row.input), isDark);
      test::expectFile(kPages / (row.input + std::string(row.form) + appearance + ".html"), page);
    }
  }
}

// The page's script is tested in a web engine; here it only has to stand in its place.
std::string clientScript(bool isDark) {
  const std::string slot = "{{diagram-theme}}";
  std::string script =
      readAll(std::filesystem::path(LUMISK_SOURCE) / "core/pages/markdown_page.js");
  script.pop_back();
  script.replace(script.find(slot), slot.size(), isDark ? "dark" : "default");
  return script;
}

TEST(MarkdownPage, EqualsItsExpectedFileInBothAppearances) {
  const std::string placeholder = "@@SCRIPT@@";
  for (const bool isDark : {false, true}) {
    std::string expected =
        readAll(kPages / (isDark ? "notes.md.dark.html" : "notes.md.light.html"));
    expected.replace(expected.find(placeholder), placeholder.size(), clientScript(isDark));
    EXPECT_EQ(buildMarkdownPage(readAll(kPages / "notes.md"), "file:///home/me/a%20b/", isDark),
              expected);
  }
}

TEST(MarkdownPage, DarkFlagChangesColoursThemesAndNothingElse) {
  std::string light = buildMarkdownPage("x", "file:///", false);
  const std::string dark = buildMarkdownPage("x", "file:///", true);
  const std::pair<std::string, std::string> darkened[] = {
      {"    color: #24292e;", "    color: #E6E6E6;"},
      {"background-color: #ffffff", "background-color: #1e1e1e"},
      {"    background: #f6f8fa;", "    background: #2d2d2d;"},
      {"    font-weight: bold;\n    background-color: #f6f8fa",
       "    font-weight: bold;\n    background-color: #2d2d2d"},
      {"(even) {\n    background-color: #f6f8fa", "(even) {\n    background-color: #2a2a2a"},
      {"#6a737d", "#8b949e"},
      {"solid #dfe2e5", "solid #444"},
      {"border: 1px solid rgba(0,0,0,0.1)", "border: 1px solid rgba(255,255,255,0.1)"},
      {"background: rgba(0,0,0,0.3);\n    cursor",
       "background: rgba(255,255,255,0.3);\n    cursor"},
      {"atom-one-light", "atom-one-dark"},
      {"theme: 'default'", "theme: 'dark'"},
  };
  for (const auto& [from, to] : darkened) {
    ASSERT_NE(light.find(from), std::string::npos) << from;
    for (std::size_t at = 0; (at = light.find(from, at)) != std::string::npos; at += to.size()) {
      light.replace(at, from.size(), to);
    }
  }
  EXPECT_EQ(light, dark);
}

TEST(MarkdownPage, HoldsTheSourceByteForByte) {
  const std::string sources[] = {
      "",
      "</script><b>&amp;\"'",
      std::string("a\0b", 3),
      "one\r\ntwo\rthree\xC2\x85"
      "four\xE2\x80\xA8"
      "five",
      "{{source}} var(--text) {{base-href}}",
      std::string(1'000'000, 'x'),
  };
  const std::string empty = buildMarkdownPage("", "file:///", true);
  const std::string holder = "<script id=\"markdown-raw\" type=\"text/markdown\">";
  const std::size_t at = empty.find(holder) + holder.size();
  EXPECT_EQ(empty.substr(at, 11), "</script>\n\n");
  for (const std::string& source : sources) {
    EXPECT_TRUE(buildMarkdownPage(source, "file:///", true) ==
                empty.substr(0, at) + source + empty.substr(at));
  }
}

TEST(CodePage, HasOneStyleElementAndTwoScripts) {
  const std::string page = buildCodePage("", "file:///x/", true);
  const auto count = [&](const std::string& text) {
    std::size_t found = 0;
    for (std::size_t at = 0; (at = page.find(text, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  EXPECT_EQ(count("<style>"), 1U);
  EXPECT_EQ(count("<script"), 2U);
  EXPECT_EQ(count("<div id=\"content\"></div>"), 1U);
}

TEST(CodePage, InsertsFragmentAndBaseAsTheyAre) {
  const std::string page = buildCodePage("<p>{{base-href}} \"x\"</p>\n", "a\"b<", false);
  EXPECT_NE(page.find("<base href=\"a\"b<\">\n"), std::string::npos);
  EXPECT_NE(page.find("    <div id=\"content\"><p>{{base-href}} \"x\"</p>\n</div>\n"),
            std::string::npos);
}

// Whatever the text, what stands around it is the same.
TEST(CodePage, FrameDoesNotDependOnTheText) {
  const FileURL folder = FileURL::fromPath("/x/");
  const std::string frame = buildCodePage("", folder.absoluteString(), true);
  const std::string opening = "<div id=\"content\">";
  const std::size_t at = frame.find(opening) + opening.size();
  std::mt19937 random(20261121);
  for (const PageCase& row : kCases) {
    SCOPED_TRACE(row.input + std::string(row.form));
    for (std::size_t size = 0; size < 300; ++size) {
      const std::string text =
          randomText(random, std::string_view("ab1 \"\"',,:{}[]<>/&\t\r\n\n\0", 23), size);
      const std::string page = row.build(text, folder.appendingPathComponent(row.input), true);
      ASSERT_TRUE(page.starts_with(std::string_view(frame).substr(0, at))) << text;
      ASSERT_TRUE(page.ends_with(std::string_view(frame).substr(at))) << text;
    }
  }
}

TEST(SourcePage, FrameDoesNotDependOnTheText) {
  const FileURL url = FileURL::fromPath("/x/a.txt");
  const std::string empty = buildSourceHTML("", url, "txt", false);
  const std::string opening = "<pre><code class=\"language-txt\">";
  const std::size_t at = empty.find(opening) + opening.size();
  for (const std::string& text :
       {std::string("a < b && c > d"), std::string("\0\r\n\xE2\x80\xA9\"'", 8),
        std::string(1'000'000, '&')}) {
    const std::string page = buildSourceHTML(text, url, "txt", false);
    EXPECT_TRUE(page.starts_with(empty.substr(0, at)));
    EXPECT_TRUE(page.ends_with(empty.substr(at)));
  }
}

TEST(SourcePage, LanguageOfTheExtension) {
  struct Row {
    const char* extension;
    const char* language;
  };
  const Row rows[] = {
      {"js", "javascript"},
      {"py", "python"},
      {"rb", "ruby"},
      {"rs", "rust"},
      {"cpp", "cpp"},
      {"h", "cpp"},
      {"hpp", "cpp"},
      {"java", "java"},
      {"ts", "typescript"},
      {"sh", "bash"},
      {"yml", "yaml"},
      {"kt", "kotlin"},
      {"cs", "csharp"},
      {"m", "objectivec"},
      {"JS", "javascript"},
      {"Yml", "yaml"},
      {"c", "c"},
      {"yaml", "yaml"},
      {"TXT", "txt"},
      {"", ""},
      {"É", "é"},
      {"a\xFF"
       "b",
       "a\xEF\xBF\xBD"
       "b"},
  };
  for (const Row& row : rows) EXPECT_EQ(highlightLanguage(row.extension), row.language);
}

}  // namespace
}  // namespace lumisk
