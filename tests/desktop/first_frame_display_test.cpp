// When a page can be uncovered: at a frame of its own, in the size of its view.

#include <gtest/gtest.h>

#include <string>

#include "desktop/curtain.h"
#include "desktop/first_frame.h"
#include "desktop/host_scripts.h"
#include "scoped_text_scale.h"
#include "screen.h"

namespace lumisk::test {
namespace {

class FirstFrame : public testing::Test {
 protected:
  void SetUp() override {
    // The page has told of its own first frame.
    ASSERT_TRUE(runUntil([&] { return !desktop::isCurtainClosed(page_.view()); }));
    place_ = desktop::placementOf(page_.view());
    ASSERT_TRUE(place_.isCurrent);
    frame_.await([this] { ++calls_; });
  }
  /// Has the page tell of a frame in this size, and waits until that has come.
  void tell(int width, int height) {
    desktop::runInPage(page_.view(), "window.webkit.messageHandlers['lumisk-frame'].postMessage([" +
                                         std::to_string(width) + ", " + std::to_string(height) +
                                         "])");
    EXPECT_EQ(page_("1"), "1");
  }

  static constexpr unsigned kForEver = 600'000;  // milliseconds
  PageOnScreen page_{"<!DOCTYPE html><p>text</p>"};
  desktop::FirstFrame frame_{page_.view(), kForEver};
  desktop::Placement place_;
  int calls_ = 0;
};

TEST_F(FirstFrame, InTheSizeOfTheViewIsTold) {
  tell(place_.width, place_.height);
  EXPECT_EQ(calls_, 1);
  tell(place_.width, place_.height);
  EXPECT_EQ(calls_, 1) << "once";
}

TEST_F(FirstFrame, InAnotherSizeIsNotTold) {
  tell(place_.width, place_.height - 50);
  tell(place_.width - 50, place_.height);
  EXPECT_EQ(calls_, 0);
  tell(place_.width, place_.height);
  EXPECT_EQ(calls_, 1);
}

TEST_F(FirstFrame, InItsSizeIsNotWaitedForWithoutEnd) {
  desktop::FirstFrame impatient(page_.view(), 1);
  bool isTold = false;
  impatient.await([&] { isTold = true; });
  tell(place_.width, place_.height - 50);
  EXPECT_TRUE(runUntil([&] { return isTold; }));
  EXPECT_EQ(calls_, 0);
}

TEST_F(FirstFrame, OfAZoomedPageIsMeasuredInItsOwnPoints) {
  webkit_web_view_set_zoom_level(page_.view(), 2);
  EXPECT_TRUE(runUntil([&] { return calls_ == 1; })) << "zooming has drawn one";
  EXPECT_EQ(page_("innerWidth"), std::to_string((place_.width + 1) / 2));
}

TEST_F(FirstFrame, OfADesktopWithLargeTextsIsMeasuredInItsOwnPoints) {
  const ScopedTextScale scale(1.25);
  ASSERT_TRUE(page_.becomes("innerWidth < " + std::to_string(place_.width - 50)))
      << "the engine zooms the page";
  EXPECT_TRUE(runUntil([&] { return calls_ == 1; }));
}

// A page that is loaded tells by itself, of a frame that fits.
TEST_F(FirstFrame, OfAnotherPageIsTold) {
  for (const double scale : {1.0, 1.25, 2.0}) {
    SCOPED_TRACE(scale);
    const ScopedTextScale texts(scale);
    calls_ = 0;
    frame_.await([this] { ++calls_; });
    page_("location.search = '?" + std::to_string(scale) + "'");
    EXPECT_TRUE(runUntil([&] { return calls_ == 1; }));
  }
}

/// A frame more is 16 milliseconds more until the page is seen.
TEST_F(FirstFrame, OfACompletePageIsNotFollowedByAnother) {
  // After the script that tells, which has asked for its first frame by then.
  WebKitUserScript* const counts = webkit_user_script_new_for_world(
      R"js(
        const ask = window.requestAnimationFrame;
        let asked = 0;
        window.requestAnimationFrame = (call) => {
          if (document.readyState === 'complete') ++asked;
          return ask(call);
        };
        addEventListener('lumisk-asked', () => { document.title = asked; });
      )js",
      WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START,
      desktop::kHostWorld, nullptr, nullptr);
  WebKitUserContentManager* const manager = webkit_web_view_get_user_content_manager(page_.view());
  webkit_user_content_manager_add_script(manager, counts);
  page_("location.search = '?next'");
  EXPECT_TRUE(runUntil([&] { return calls_ == 1; }));
  EXPECT_EQ(page_("dispatchEvent(new Event('lumisk-asked')), document.title"), "0");
  webkit_user_content_manager_remove_script(manager, counts);
  webkit_user_script_unref(counts);
}

TEST_F(FirstFrame, IsNoMatterOfThePagesOwnEvents) {
  page_("for (let i = 0; i < 100; ++i) dispatchEvent(new Event('resize'))");
  runFor(300);
  EXPECT_EQ(calls_, 0);
}

TEST_F(FirstFrame, OfAViewWithoutAPlaceWaitsForIt) {
  GtkWidget* const view = GTK_WIDGET(page_.view());
  gtk_widget_set_visible(view, FALSE);
  tell(place_.width, place_.height);
  EXPECT_EQ(calls_, 0);
  gtk_widget_set_visible(view, TRUE);
  EXPECT_TRUE(runUntil([&] { return calls_ == 1; }));
}

TEST_F(FirstFrame, ComesInEachNewSize) {
  gtk_window_set_default_size(GTK_WINDOW(gtk_widget_get_root(GTK_WIDGET(page_.view()))), 500, 400);
  EXPECT_TRUE(runUntil([&] { return calls_ == 1; }));
  const desktop::Placement now = desktop::placementOf(page_.view());
  EXPECT_NE(now.width, place_.width);
  EXPECT_EQ(page_("innerWidth"), std::to_string(now.width));
}

TEST_F(FirstFrame, ThatIsForgottenIsNotTold) {
  frame_.forget();
  tell(place_.width, place_.height);
  EXPECT_EQ(calls_, 0);
}

}  // namespace
}  // namespace lumisk::test
