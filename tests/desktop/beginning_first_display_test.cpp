// Long sources, JSON and tables: one screenful in the first frame, in its final form, and all of
// the page later, as its own script and the highlighter would have made it at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/beginning_first.h"
#include "desktop/page_drawing.h"
#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

constexpr std::size_t kKilobyte = 1024;

std::string source(std::size_t size) {
  std::string text;
  for (int i = 0; text.size() < size; ++i)
    text += "int value" + std::to_string(i) + " = " + std::to_string(i * 7) + ";  // one & <two>\n";
  return text;
}

/// The page at the moment of its first frame, as far as tests ask for it.
const std::string kWatch = R"js(
  addEventListener('load', () => requestAnimationFrame(() => {
    const visible = (selector) => [...document.querySelectorAll(selector)].filter(
        (element) => element.getClientRects().length > 0);
    const code = visible('pre > code').at(-1);
    window.first = {
      characters: visible('pre > code').reduce((sum, block) => sum + block.textContent.length, 0),
      blocks: visible('pre').length,
      rows: visible('tr').filter((row) => !row.closest('[style]:not(div)')).length,
      widths: visible('th').map((cell) => cell.getBoundingClientRect().width).join(),
      bottom: document.getElementById('content').getBoundingClientRect().bottom,
      beginning: code ? code.innerHTML : '',
      isColoured: code ? code.matches('.hljs') && code.querySelector('[class^=hljs-]') !== null : false,
    };
  }));
)js";

class BeginningFirst : public PreviewTest {
 protected:
  /// Opens the file and loads it once more, with somebody watching. `before` runs before the page.
  void open(const std::string& name, const std::string& text, const std::string& before = {},
            const char* mode = nullptr) {
    preview_.reset();
    loads_ = 1;
    writeAll(folder_ / name, text);
    preview_ = std::make_unique<Preview>(folder_ / name);
    ASSERT_TRUE(preview_->finishes());
    if (mode != nullptr) {
      ASSERT_TRUE(preview_->presentation().selectMode(mode));
      ASSERT_TRUE(finishesAnother());
    }
    WebKitUserScript* const watch =
        webkit_user_script_new((kWatch + before).c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
    WebKitUserContentManager* const manager =
        webkit_web_view_get_user_content_manager(preview_->page());
    webkit_user_content_manager_add_script(manager, watch);
    webkit_web_view_reload(preview_->page());
    const bool isThere = finishesAnother();
    webkit_user_content_manager_remove_script(manager, watch);
    webkit_user_script_unref(watch);
    ASSERT_TRUE(isThere && becomes("window.first !== undefined"));
  }
  bool finishesAnother() {
    const int before = loads_;
    loads_ = before + 1;
    return runUntil([&] { return preview_->finishedLoads() > before; });
  }
  std::string page(const std::string& script) { return evaluate(preview_->page(), script); }
  double number(const std::string& script) { return std::stod(page(script)); }
  bool becomes(const std::string& script) {
    return runUntil([&] { return page(script) == "true"; });
  }
  bool isCompleted() {
    return becomes("!document.getElementById('content').hasAttribute('aria-busy')");
  }
  void expectFullScreen() {
    EXPECT_GT(number("first.bottom"), number("innerHeight")) << "less than the window holds";
  }
  /// As the page's own script makes it where nobody holds anything back.
  void expectAsThePageMakesIt() {
    const char* const kContent = "document.getElementById('content').outerHTML";
    EXPECT_EQ(page("[...document.querySelectorAll('pre, tr')].every("
                   "(element) => element.getClientRects().length > 0)"),
              "true");
    const std::string content = page(kContent);
    const std::string address = webkit_web_view_get_uri(preview_->page());
    const auto file = FileURL::fromString(address.substr(0, address.find('?')));
    ASSERT_TRUE(file);
    const std::string html = readAll(file->path());
    webkit_web_view_load_html(preview_->page(), html.c_str(), "file:///tmp/");
    ASSERT_TRUE(finishesAnother());
    EXPECT_TRUE(content == page(kContent));
  }

  int loads_ = 1;
  std::unique_ptr<Preview> preview_;
};

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

/// What decides the widths comes after the first screen: the longest cell of one column, which has
/// short words, the longest word of another, and one of few signs that are wide.
std::string table(int rows) {
  std::string text = "Name,Text,Place,N\n";
  for (int i = 1; i < rows; ++i) {
    const bool isWide = i == rows * 2 / 3;
    text += isWide ? "na me of ma ny sm al wo rd s" : "name";
    text +=
        isWide ? ",Donaudampfschifffahrtsgesellschaftskapitänsmütze or so" : ",some words of text";
    text += isWide ? ",⟺⟺ ⟺⟺ ⟺⟺" : ",here or there";
    text += "," + std::to_string(i) + "\n";
  }
  return text;
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

TEST_F(BeginningFirst, AndMoreWhereSomebodyGoes) {
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

TEST_F(BeginningFirst, AndAllForTheAsking) {
  const std::string text = source(400 * kKilobyte);
  open("longer.cpp", text);
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  expectAsThePageMakesIt();
}

TEST_F(BeginningFirst, AndAllWithoutMoreColoursWhereThoseWouldTakeTooLong) {
  const std::string text = source(1200 * kKilobyte);
  open("longest.cpp", text);
  const double colours = number("document.querySelectorAll('.hljs-comment').length");
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  EXPECT_GT(colours, 10);
  EXPECT_EQ(number("document.querySelectorAll('.hljs-comment').length"), colours);
}

TEST_F(BeginningFirst, AndAllBeforeAnybodyCopiesIt) {
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

TEST_F(BeginningFirst, AndAllWhereSomebodyAskedBeforeItWasThere) {
  const std::string text = source(1200 * kKilobyte);
  open("longest.cpp", text, "dispatchEvent(new Event('lumisk-show-all'));");
  EXPECT_EQ(number("first.characters"), static_cast<double>(text.size()));
  EXPECT_EQ(page("document.querySelector('.hljs-comment') === null"), "true")
      << "colours for all of it take minutes where it is longer still";
}

TEST_F(BeginningFirst, WhatIsSelectedStaysSelected) {
  open("longer.cpp", source(400 * kKilobyte));
  const std::string selected = page(R"js((() => {
    const comments = document.querySelectorAll('.hljs-comment');
    getSelection().setBaseAndExtent(comments[3].firstChild, 6, comments[1].firstChild, 3);
    return String(getSelection());
  })())js");
  EXPECT_THAT(selected, HasSubstr("value2"));
  desktop::showAll(preview_->page());
  EXPECT_EQ(page("String(getSelection())"), selected);
  EXPECT_EQ(page("getSelection().anchorOffset"), "6") << "it goes the other way";
}

TEST_F(BeginningFirst, ALongLineIsCut) {
  const std::string text = "var x = \"" + std::string(200 * kKilobyte, 'y') + "\";";
  open("minified.js", text);
  EXPECT_LT(number("first.characters"), static_cast<double>(text.size()) / 4);
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
  expectAsThePageMakesIt();
}

TEST_F(BeginningFirst, ALongLineGoesOnForWhomeverFollowsIt) {
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

TEST_F(BeginningFirst, LongLinesFillTheScreenToo) {
  std::string text;
  for (int line = 0; line < 100; ++line) text += std::string(8 * kKilobyte, 'y') + "\n";
  open("long.txt", text);
  EXPECT_TRUE(
      becomes("document.getElementById('content').getBoundingClientRect().bottom > "
              "innerHeight"));
}

TEST_F(BeginningFirst, WithoutTheHighlighterAllOfItComesToo) {
  const std::string text = source(100 * kKilobyte);
  open("long.cpp", text, "Object.defineProperty(window, 'hljs', {get() {}, set() {}});");
  EXPECT_LT(number("first.characters"), static_cast<double>(text.size()) / 4);
  ASSERT_TRUE(isCompleted());
  EXPECT_EQ(page("document.querySelector('pre > code').outerHTML.startsWith("
                 "'<code class=\"language-cpp\">int value0')"),
            "true");
  EXPECT_EQ(page("document.querySelector('pre > code').textContent"), text);
}

TEST_F(BeginningFirst, WhereTheHighlighterFailsAllOfItComesToo) {
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

TEST_F(BeginningFirst, NoCharacterIsCutInTwo) {
  std::string text;
  for (int i = 0; i < 60'000; ++i) text += "\U0001F600";
  open("faces.txt", "x" + text);
  EXPECT_EQ(page("/[\\ud800-\\udbff]$/.test(first.beginning)"), "false");
  open("faces.txt", text);
  EXPECT_EQ(page("/[\\ud800-\\udbff]$/.test(first.beginning)"), "false");
}

TEST_F(BeginningFirst, APictureWaitsForWhatComesByItself) {
  open("Longfile", source(15 * kKilobyte));
  bool isDrawn = false;
  desktop::PageDrawing drawing;
  drawing.wait(preview_->page(), [&] { isDrawn = true; });
  ASSERT_TRUE(runUntil([&] { return isDrawn; }));
  EXPECT_EQ(page("document.querySelector('pre > code').dataset.highlighted"), "yes");
}

TEST_F(BeginningFirst, NotOfAShortPage) {
  const std::string text = source(8 * kKilobyte);
  open("short.cpp", text);
  EXPECT_EQ(number("first.characters"), static_cast<double>(text.size()));
  EXPECT_EQ(page("document.querySelector('pre > code').dataset.highlighted"), "yes");
}

}  // namespace
}  // namespace lumisk::test
