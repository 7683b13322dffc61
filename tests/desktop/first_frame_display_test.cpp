// When a page can be uncovered: at a frame of its own, in the size of its view.

#include <gtest/gtest.h>

#include <string>

#include "desktop/curtained_view.h"
#include "desktop/first_frame.h"
#include "desktop/host_scripts.h"
#include "screen.h"

namespace lumisk::test {
namespace {

class FirstFrame : public testing::Test {
 protected:
  void SetUp() override {
    runFor(100);
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
