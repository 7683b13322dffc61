#include "core/json_page.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/code_page.h"
#include "core/output.h"
#include "json_testing.h"

namespace lumisk {
namespace {

const FileURL kFile = FileURL::fromPath("/home/a b/dummy.json");
constexpr std::string_view kBase = "file:///home/a%20b/";

std::string page(std::string_view text, bool isDark) {
  const std::string fragment =
      "<pre><code class=\"language-json\">" + std::string(text) + "</code></pre>";
  return buildCodePage(fragment, kBase, isDark);
}

std::string streamed(std::string_view content, bool isDark, bool formatted) {
  StringOutput out(0);
  writeJSONHTML(out, content, kFile, isDark, formatted);
  return out.take();
}

void expectPage(std::string_view content, bool formatted, std::string_view text,
                std::string_view label) {
  for (const bool isDark : {false, true}) {
    EXPECT_EQ(buildJSONHTML(content, kFile, isDark, formatted), page(text, isDark)) << label;
    EXPECT_EQ(streamed(content, isDark, formatted), page(text, isDark)) << label;
  }
}

TEST(JsonPage, FormattedShowsTheDocumentLaidOut) {
  expectPage(R"({"a":"x\/y"})", true, "{\n  \"a\" : \"x/y\"\n}", "slash");
  expectPage(R"({"a":"x & y"})", true, "{\n  \"a\" : \"x &amp; y\"\n}", "ampersand");
  expectPage("\n [ ] \n", true, "[\n\n]", "empty array");
}

TEST(JsonPage, FormattedShowsWhatIsNoJsonAsItStands) {
  expectPage("", true, "", "empty");
  expectPage(" \n", true, " \n", "blanks");
  expectPage("{\"a\": <b>}", true, "{\"a\": &lt;b&gt;}", "angle brackets");
  expectPage("[1,\n  2 & 3]\n", true, "[1,\n  2 &amp; 3]\n", "ampersand");
  expectPage("\"text\"", true, "\"text\"", "string at the top");
  expectPage("12.50", true, "12.50", "number at the top");
  expectPage("null\r\n", true, "null\r\n", "null at the top");
  expectPage("[1.0,2.0", true, "[1.0,2.0", "cut");
  expectPage(std::string_view("[\0]", 3), true, std::string_view("[\0]", 3), "NUL");
}

TEST(JsonPage, AsTextIsNeverParsed) {
  expectPage(R"( {"a" :"x\/y<&>"} )", false, R"( {"a" :"x\/y&lt;&amp;&gt;"} )", "JSON");
  expectPage("", false, "", "empty");
  expectPage("no JSON", false, "no JSON", "no JSON");
}

TEST(JsonPage, LargeDocumentsAreShownLikeSmallOnes) {
  // Around the size up to which a draft is kept, and far beyond.
  for (const std::size_t count : {10000U, 17000U, 17476U, 17477U, 18000U, 200000U}) {
    std::string content = "[0";
    std::string text = "[\n  0";
    for (std::size_t i = 0; i < count; ++i) {
      content += ",\"<" + std::to_string(i % 10) + "\"";
      text += ",\n  \"&lt;" + std::to_string(i % 10) + "\"";
    }
    expectPage(content + "]", true, text + "\n]", "JSON");
    const std::string broken = content + "}";
    std::string raw;
    for (const char byte : broken) raw += byte == '<' ? "&lt;" : std::string(1, byte);
    expectPage(broken, true, raw, "no JSON at the last byte");
  }
}

}  // namespace
}  // namespace lumisk
