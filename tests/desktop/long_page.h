#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "preview_on_screen.h"

namespace lumisk::test {

inline constexpr std::size_t kKilobyte = 1024;

inline std::string source(std::size_t size) {
  std::string text;
  for (int i = 0; text.size() < size; ++i)
    text += "int value" + std::to_string(i) + " = " + std::to_string(i * 7) + ";  // one & <two>\n";
  return text;
}

/// What decides the widths comes after the first screen: the longest cell of one column, which has
/// short words, the longest word of another, and one of few signs that are wide.
inline std::string table(int rows) {
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

/// The page at the moment of its first frame, as far as tests ask for it.
inline const std::string kWatch = R"js(
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
      isBusy: document.getElementById('content').hasAttribute('aria-busy'),
      below: document.documentElement.scrollHeight - Math.max(
          ...visible('tr').filter(
              (row) => row.closest('tbody').style.visibility !== 'hidden').map((row) => row.getBoundingClientRect().bottom)),
      beginning: code ? code.innerHTML : '',
      isColoured: code ? code.matches('.hljs') && code.querySelector('[class^=hljs-]') !== null : false,
    };
  }));
)js";

class LongPage : public PreviewTest {
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
  /// A character in the text of one of the elements that are alike.
  struct Place {
    int element;
    int offset;
  };
  /// Selects the text between the two, and tells it.
  std::string select(const std::string& elements, Place anchor, Place focus) {
    const auto end = [](Place place) {
      return "each[" + std::to_string(place.element) + "].firstChild, " +
             std::to_string(place.offset);
    };
    return page("(() => { const each = document.querySelectorAll('" + elements +
                "'); getSelection().setBaseAndExtent(" + end(anchor) + ", " + end(focus) +
                "); return String(getSelection()); })()");
  }
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

}  // namespace lumisk::test
