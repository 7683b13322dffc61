// What stands on the pages as the engine shows them, after their own scripts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

/// The text of each element that the selector finds, one a line.
std::string textsOf(WebKitWebView* page, const std::string& selector) {
  return evaluate(page, "[...document.querySelectorAll('" + selector +
                            "')].map((element) => element.textContent).join('\\n')");
}

class PageContent : public PreviewTest {};

TEST_F(PageContent, ATableHasItsRowsAndColumns) {
  // Quotes at the ends of a cell go, but hold no cell together; an entity stands for its character.
  writeAll(folder_ / "people.csv", "Name,Year\n\"Lovelace, Ada\",1815\n<b>&amp;,\n");
  Preview preview(folder_ / "people.csv");
  ASSERT_TRUE(preview.finishes());
  EXPECT_EQ(textsOf(preview.page(), "tr:first-child th"), "Name\nYear");
  EXPECT_EQ(textsOf(preview.page(), "tr:nth-child(2) td"), "Lovelace\n Ada\n1815");
  EXPECT_EQ(textsOf(preview.page(), "tr:nth-child(3) td"), "<b>&\n");
  EXPECT_EQ(evaluate(preview.page(), "document.querySelectorAll('table tr').length"), "3");
}

TEST_F(PageContent, ATableBetweenTabsIsOneToo) {
  writeAll(folder_ / "people.tsv", "Name\tYear\nAda, Countess\t1815\n");
  Preview preview(folder_ / "people.tsv");
  ASSERT_TRUE(preview.finishes());
  EXPECT_EQ(textsOf(preview.page(), "td"), "Ada, Countess\n1815");
}

TEST_F(PageContent, ASourceIsWholeAndInColour) {
  const std::string source = "// <b>&amp;\nint main() {\n\treturn 0;\n}\n";
  writeAll(folder_ / "main.cpp", source);
  Preview preview(folder_ / "main.cpp");
  ASSERT_TRUE(preview.finishes());
  EXPECT_EQ(textsOf(preview.page(), "pre code"), source);
  EXPECT_EQ(textsOf(preview.page(), "code.hljs .hljs-comment"), "// <b>&amp;");
  EXPECT_THAT(textsOf(preview.page(), "code.hljs .hljs-keyword"), HasSubstr("return"));
}

TEST_F(PageContent, JsonLinesAreShownRawFirstAndThenLineByLine) {
  Preview preview(folder_ / "log.jsonl");
  ASSERT_TRUE(preview.finishes());
  EXPECT_EQ(textsOf(preview.page(), "pre code"), "{\"a\":1}\n{\"a\":2}\n");
  ASSERT_TRUE(preview.presentation().selectMode("formatted"));
  ASSERT_TRUE(runUntil([&] { return preview.finishedLoads() == 2; }));
  const std::string formatted = textsOf(preview.page(), "pre");
  EXPECT_THAT(formatted, HasSubstr("\"a\" : 1"));
  EXPECT_THAT(formatted, HasSubstr("\"a\" : 2"));
  EXPECT_LT(formatted.find("\"a\" : 1"), formatted.find("\"a\" : 2"));
}

}  // namespace
}  // namespace lumisk::test
