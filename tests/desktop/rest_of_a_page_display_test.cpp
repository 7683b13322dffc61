// Long pages after their first screenful: what brings the rest, and what it leaves as it was.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/beginning_first.h"
#include "desktop/page_drawing.h"
#include "long_page.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

class RestOfAPage : public LongPage {};

TEST_F(RestOfAPage, ComesWhereSomebodyGoes) {
  const std::string text = source(400 * kKilobyte);
  open("longer.cpp", text);
  const char* const shown = "document.querySelector('pre > code').textContent.length";
  runFor(1500);
  const double kept = number(shown);
  EXPECT_LT(kept, static_cast<double>(text.size()) / 4)
      << "all of it would keep the page busy for seconds";
  page("scrollTo(0, document.documentElement.scrollHeight)");
  EXPECT_TRUE(runUntil([&] { return number(shown) > kept; }));
  EXPECT_EQ(page("document.querySelector('pre > code').dataset.highlighted"), "undefined");
  EXPECT_GT(number("document.querySelectorAll('.hljs-comment').length"),
            number("first.characters") / 100);
}

TEST_F(RestOfAPage, ComesForTheAsking) {
  const std::string text = source(400 * kKilobyte);
  open("longer.cpp", text);
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  expectAsThePageMakesIt();
}

TEST_F(RestOfAPage, ComesWithoutMoreColoursWhereThoseWouldTakeTooLong) {
  const std::string text = source(1200 * kKilobyte);
  open("longest.cpp", text);
  const double colours = number("document.querySelectorAll('.hljs-comment').length");
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  EXPECT_GT(colours, 10);
  EXPECT_EQ(number("document.querySelectorAll('.hljs-comment').length"), colours);
}

TEST_F(RestOfAPage, ComesBeforeAnybodyCopiesIt) {
  const std::string text = source(400 * kKilobyte);
  open("longer.cpp", text);
  webkit_web_view_execute_editing_command(preview_->page(), WEBKIT_EDITING_COMMAND_SELECT_ALL);
  EXPECT_TRUE(
      becomes("String(getSelection()).includes(" + std::to_string(7 * 8000) + " + ';  // one')"))
      << page("String(getSelection()).length");
  open("longer.csv", table(20'000));
  EXPECT_LT(number("first.rows"), 250);
  webkit_web_view_execute_editing_command(preview_->page(), WEBKIT_EDITING_COMMAND_SELECT_ALL);
  EXPECT_TRUE(becomes("String(getSelection()).includes('19999')"));
}

TEST_F(RestOfAPage, ComesWhereSomebodyAskedBeforeItWasThere) {
  const std::string text = source(1200 * kKilobyte);
  open("longest.cpp", text, "dispatchEvent(new Event('lumisk-show-all'));");
  EXPECT_EQ(number("first.characters"), static_cast<double>(text.size()));
  EXPECT_EQ(page("document.querySelector('.hljs-comment') === null"), "true")
      << "colours for all of it take minutes where it is longer still";
}

TEST_F(RestOfAPage, WhatIsSelectedStaysSelected) {
  open("longer.cpp", source(400 * kKilobyte));
  const std::string selected = select(".hljs-comment", {3, 6}, {1, 3});
  EXPECT_THAT(selected, HasSubstr("value2"));
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("String(getSelection())"), selected);
  EXPECT_EQ(page("getSelection().anchorOffset"), "6") << "it goes the other way";
}

TEST_F(RestOfAPage, WhatIsSelectedAcrossBlocksStaysSelected) {
  std::string text = "{\"first\":1}\n{\"numbers\":[1";
  for (int i = 0; i < 60'000; ++i) text += "," + std::to_string(i);
  open("two.jsonl", text + "]}\n", {}, "formatted");
  const std::string selected = select(".hljs-number", {0, 0}, {4, 1});
  EXPECT_THAT(selected, HasSubstr("numbers"));
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("String(getSelection())"), selected);
}

TEST_F(RestOfAPage, AWordThatIsSelectedIsNotEverything) {
  open("longer.unknown", source(400 * kKilobyte));
  page(
      "getSelection().setBaseAndExtent(document.querySelector('pre > code').firstChild, 4, "
      "document.querySelector('pre > code').firstChild, 10)");
  runFor(300);
  EXPECT_EQ(page("String(getSelection())"), "value0");
}

TEST_F(RestOfAPage, ALongLineIsCut) {
  const std::string text = "var x = \"" + std::string(200 * kKilobyte, 'y') + "\";";
  open("minified.js", text);
  EXPECT_LT(number("first.characters"), static_cast<double>(text.size()) / 4);
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  expectAsThePageMakesIt();
}

TEST_F(RestOfAPage, ALongLineGoesOnForWhomeverFollowsIt) {
  const std::string text = "var x = \"" + std::string(400 * kKilobyte, 'y') + "\";";
  open("minified.js", text);
  const double beginning = number("first.characters");
  EXPECT_LT(beginning, static_cast<double>(text.size()) / 4);
  runFor(1000);
  const char* const kShown = "document.querySelector('pre > code').textContent.length";
  EXPECT_EQ(number(kShown), beginning) << "nothing more can be seen of it";
  page("document.querySelector('pre > code').scrollLeft = 1e9");
  EXPECT_TRUE(runUntil([&] { return number(kShown) > beginning; }));
}

TEST_F(RestOfAPage, LongLinesFillTheScreenToo) {
  std::string text;
  for (int line = 0; line < 100; ++line) text += std::string(8 * kKilobyte, 'y') + "\n";
  open("long.txt", text);
  EXPECT_TRUE(
      becomes("document.getElementById('content').getBoundingClientRect().bottom > "
              "innerHeight"));
}

TEST_F(RestOfAPage, WithoutTheHighlighterAllOfItComesToo) {
  const std::string text = source(100 * kKilobyte);
  open("long.cpp", text, "Object.defineProperty(window, 'hljs', {get() {}, set() {}});");
  EXPECT_LT(number("first.characters"), static_cast<double>(text.size()) / 4);
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').outerHTML.startsWith("
                 "'<code class=\"language-cpp\">int value0')"),
            "true");
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
}

TEST_F(RestOfAPage, WhereTheHighlighterFailsAllOfItComesToo) {
  const std::string text = source(400 * kKilobyte);
  // Once the beginning is there.
  open("long.cpp", text, R"js(addEventListener('load', () => {
    const highlight = hljs.highlight;
    let calls = 0;
    hljs.highlight = (...arguments) => {
      if (++calls > 1) throw new Error('failed');
      return highlight(...arguments);
    };
  }, {capture: true});)js");
  EXPECT_LT(number("first.characters"), static_cast<double>(text.size()) / 4);
  page("scrollTo(0, document.documentElement.scrollHeight)");
  EXPECT_TRUE(runUntil([&] {
    return page("document.querySelector('pre > code').textContent.length") ==
           std::to_string(text.size());
  }));
}

TEST_F(RestOfAPage, NoCharacterIsCutInTwo) {
  std::string text;
  for (int i = 0; i < 60'000; ++i) text += "\U0001F600";
  open("faces.txt", "x" + text);
  EXPECT_EQ(page("/[\\ud800-\\udbff]$/.test(first.beginning)"), "false");
  open("faces.txt", text);
  EXPECT_EQ(page("/[\\ud800-\\udbff]$/.test(first.beginning)"), "false");
}

TEST_F(RestOfAPage, APictureWaitsForWhatComesByItself) {
  open("Longfile", source(15 * kKilobyte));
  bool isDrawn = false;
  desktop::PageDrawing drawing;
  drawing.wait(preview_->page(), [&] { isDrawn = true; });
  ASSERT_TRUE(runUntil([&] { return isDrawn; }));
  EXPECT_EQ(page("document.querySelector('pre > code').dataset.highlighted"), "yes");
}

TEST_F(RestOfAPage, NotOfAShortPage) {
  const std::string text = source(8 * kKilobyte);
  open("short.cpp", text);
  EXPECT_EQ(number("first.characters"), static_cast<double>(text.size()));
  EXPECT_EQ(page("document.querySelector('pre > code').dataset.highlighted"), "yes");
}

}  // namespace
}  // namespace lumisk::test
