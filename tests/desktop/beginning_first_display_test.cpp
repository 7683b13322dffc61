// Long sources, JSON and tables: one screenful in the first frame, in its final form, and all of
// the page later, as its own script and the highlighter would have made it at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/beginning_first.h"
#include "long_page.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

class BeginningFirst : public LongPage {};

TEST_F(BeginningFirst, OfASource) {
  const std::string text = source(100 * kKilobyte);
  open("long.cpp", text);
  EXPECT_LT(number("first.characters"), static_cast<double>(text.size()) / 4);
  EXPECT_EQ(page("first.isColoured"), "true");
  expectFullScreen();
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  EXPECT_EQ(page("document.querySelector('pre > code').innerHTML.startsWith(first.beginning)"),
            "true")
      << "colours changed under the reader's eyes";
  expectAsThePageMakesIt();
}

TEST_F(BeginningFirst, OfJson) {
  std::string text = "[";
  for (int i = 0; i < 3000; ++i) text += "{\"a\":" + std::to_string(i) + ",\"b\":[true,null]},";
  text.back() = ']';
  open("long.json", text);
  EXPECT_EQ(page("first.isColoured"), "true");
  expectFullScreen();
  ASSERT_TRUE(isCompleted());
  EXPECT_GT(number("document.querySelector('pre > code').textContent.length"),
            4 * number("first.characters"));
  expectAsThePageMakesIt();
}

TEST_F(BeginningFirst, OfManyRecords) {
  constexpr int kRecords = 900;
  std::string text;
  for (int i = 0; i < kRecords; ++i) text += "{\"a\":" + std::to_string(i) + ",\"b\":[1,2]}\n";
  open("long.jsonl", text, {}, "formatted");
  EXPECT_LT(number("first.blocks"), kRecords / 4);
  EXPECT_EQ(page("first.isColoured"), "true");
  expectFullScreen();
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelectorAll('pre > code').length"), std::to_string(kRecords));
  expectAsThePageMakesIt();
}

TEST_F(BeginningFirst, OfATableWithItsFinalWidths) {
  constexpr int kRows = 900;
  open("long.csv", table(kRows));
  EXPECT_LT(number("first.rows"), kRows / 4);
  expectFullScreen();
  const std::string widths = page("first.widths");
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("[...document.querySelectorAll('th')].map("
                 "(cell) => cell.getBoundingClientRect().width).join()"),
            widths);
  EXPECT_EQ(page("[...document.querySelectorAll('tr')].filter("
                 "(row) => row.getClientRects().length > 0).length"),
            std::to_string(kRows));
  EXPECT_EQ(page("document.querySelectorAll('tbody').length"), "1");
}

TEST_F(BeginningFirst, OfAWideTableWithItsFinalWidths) {
  constexpr int kColumns = 24;
  std::string text;
  for (int row = 0; row < 600; ++row)
    for (int column = 0; column < kColumns; ++column)
      text +=
          (row == 500 ? "thelongestword" + std::to_string(column) : "many words but no long one") +
          (column + 1 < kColumns ? "," : "\n");
  open("wide.csv", text);
  const std::string widths = page("first.widths");
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("[...document.querySelectorAll('th')].map("
                 "(cell) => cell.getBoundingClientRect().width).join()"),
            widths);
}

TEST_F(BeginningFirst, OfATableIsKeptWhereAllOfItTakesLong) {
  std::string text = "A title\n";
  for (int row = 0; row < 4000; ++row) text += "a,b,c,d,e,f,g,h,i,j\n";
  open("titled.csv", text);
  EXPECT_EQ(page("first.isBusy"), "false") << "forty thousand cells come unasked";
  open("short.csv", table(900));
  EXPECT_EQ(page("first.isBusy"), "true");
}

TEST_F(BeginningFirst, NothingEmptyStandsBelowATable) {
  std::string prose;
  while (prose.size() < 3000) prose += "some words of prose ";
  std::string text = "A,B\n";
  for (int row = 0; row < 500; ++row) text += "x," + (row > 300 ? prose : "y") + "\n";
  open("prose.csv", text);
  EXPECT_LT(number("first.below"), 100) << "pixels";
}

TEST_F(BeginningFirst, OfRecordsOfOneLine) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "{}\n";
  open("empty.jsonl", text, {}, "formatted");
  EXPECT_LT(number("first.blocks"), 250);
  expectFullScreen();
}

TEST_F(BeginningFirst, InTheLanguageThatTheHighlighterTakes) {
  // It takes this name for C, which has no such keywords.
  std::string text;
  while (text.size() < 100 * kKilobyte) text += "class Value { virtual ~Value(); };\n";
  open("long.c++", text);
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').innerHTML.startsWith(first.beginning)"),
            "true");
  expectAsThePageMakesIt();
}

TEST_F(BeginningFirst, OfAHostileTable) {
  std::string text = "A,B\n";
  for (int i = 0; i < 500; ++i) text += "x,y\n";
  text += std::string(300 * kKilobyte, 'z') + ",";
  for (int i = 0; i < 200'000; ++i) text += "w ";
  for (int i = 0; i < 30'000; ++i) text += ",";
  open("hostile.csv", text + "\nx,y\n");
  EXPECT_LT(number("first.rows"), 250);
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("[...document.querySelectorAll('tr')].filter("
                 "(row) => row.getClientRects().length > 0).length"),
            "503");
  EXPECT_EQ(page("document.querySelectorAll('tbody').length"), "1");
}

TEST_F(BeginningFirst, FillsAPageThatIsZoomedOut) {
  open("longer.cpp", source(400 * kKilobyte));
  webkit_web_view_set_zoom_level(preview_->page(), 0.2);
  const char* const kIsFull =
      "document.getElementById('content').getBoundingClientRect().bottom > innerHeight";
  EXPECT_TRUE(becomes(kIsFull)) << "when the zoom changes";
  webkit_web_view_reload(preview_->page());
  EXPECT_TRUE(becomes("window.first === undefined && document.readyState === 'complete'"));
  EXPECT_EQ(page(kIsFull), "true") << "and from the beginning";
  webkit_web_view_set_zoom_level(preview_->page(), 1);
}

TEST_F(BeginningFirst, BeforeALanguageIsGuessed) {
  std::string text = "#include <stdio.h>\n";
  while (text.size() < 30 * kKilobyte) text += "int main(void) { return printf(\"%d\", 1); }\n";
  open("Longfile", text);
  EXPECT_EQ(page("first.isColoured"), "false");
  expectFullScreen();
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  EXPECT_THAT(page("document.querySelector('pre > code').className"), HasSubstr("language-"));
  expectAsThePageMakesIt();
}

}  // namespace
}  // namespace lumisk::test
