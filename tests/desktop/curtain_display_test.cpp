// A web view behind its curtain: not to be seen, and as alive as before it.

#include <gtest/gtest.h>

#include "desktop/curtain.h"
#include "screen.h"
#include "x_desktop.h"

namespace lumisk::test {
namespace {

/// A page that is dark all over and counts its frames, in a window that is light.
class Curtain : public testing::Test {
 protected:
  Curtain() {
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(),
                                       ADW_COLOR_SCHEME_FORCE_LIGHT);
  }
  ~Curtain() override {
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), ADW_COLOR_SCHEME_DEFAULT);
  }
  /// Until the page is drawn the curtain is the host's.
  void SetUp() override { ASSERT_TRUE(isDark()); }
  bool isDark() const {
    return becomes([](int lightness) { return lightness < 30; });
  }
  bool isLight() const {
    return becomes([](int lightness) { return lightness > 200; });
  }
  bool countsFrames() {
    const std::string before = page_("String(window.count)");
    return runUntil([&] { return page_("String(window.count)") != before; });
  }

  PageOnScreen page_{R"html(<!DOCTYPE html><body style="background: black; height: 100vh"><script>
    window.count = 0;
    const next = () => { if (++window.count > 0) requestAnimationFrame(next); };
    next();
  </script></body>)html"};

 private:
  /// On the screen itself: a picture of the widgets would have them drawn.
  bool becomes(bool (*isSo)(int)) const {
    return runUntil([&] {
      runFor(30);  // to look takes time, which those who draw need
      const std::vector<WindowId> windows = desktop_.windows();
      const XDesktop::Lightness screen = desktop_.lightnessOfTheScreen();
      if (windows.size() != 1 || screen.width == 0) return false;
      const ScreenPlace place = desktop_.placeOf(windows.front());
      const int middle = (place.y + place.height / 2) * screen.width + place.x + place.width / 2;
      return isSo(screen.pixels.at(static_cast<std::size_t>(middle)));
    });
  }

  XDesktop desktop_;
};

TEST_F(Curtain, ShowsWhatIsBehindItWhileTheCurtainIsClosed) {
  page_("window.count = -Infinity");  // no frame of the page draws the window anew
  runFor(300);
  desktop::setCurtainClosed(page_.view(), true);
  EXPECT_TRUE(isLight());
  desktop::setCurtainClosed(page_.view(), false);
  EXPECT_TRUE(isDark());
}

TEST_F(Curtain, ThePageHasItsFramesBehindTheCurtain) {
  desktop::setCurtainClosed(page_.view(), true);
  ASSERT_TRUE(isLight());
  EXPECT_TRUE(countsFrames());
  EXPECT_EQ(page_("document.visibilityState"), "visible");
}

TEST_F(Curtain, TheWindowIsNotDrawnForThePageBehindTheCurtain) {
  page_("setInterval(() => { document.body.style.marginTop = `${window.count % 50}px`; }, 10)");
  GtkWidget* const view = GTK_WIDGET(page_.view());
  ASSERT_TRUE(runUntil([&] { return framesWithin(view, 200) > 3; }));
  desktop::setCurtainClosed(page_.view(), true);
  EXPECT_TRUE(runUntil([&] { return framesWithin(view, 200) == 0; }));
  EXPECT_TRUE(countsFrames());
  desktop::setCurtainClosed(page_.view(), false);
  EXPECT_TRUE(runUntil([&] { return framesWithin(view, 200) > 3; }));
}

TEST_F(Curtain, ShowsThePageAsItHasBecomeMeanwhile) {
  desktop::setCurtainClosed(page_.view(), true);
  ASSERT_TRUE(isLight());
  page_("document.body.style.background = 'white', 1");
  ASSERT_TRUE(countsFrames());
  desktop::setCurtainClosed(page_.view(), false);
  EXPECT_TRUE(isLight());
  page_("document.body.style.background = 'black', 1");
  EXPECT_TRUE(isDark()) << "and goes on";
}

/// A card makes the next frame only once the one before was taken.
TEST(CurtainBeforeACard, HasTheWindowTakeEachFrame) {
  const auto view = Program::shared().engine.makeView();
  GtkWindow* const window = GTK_WINDOW(gtk_window_new());
  gtk_window_set_child(window, desktop::curtainNew(view.get(), true));
  desktop::setCurtainClosed(view.get(), true);
  gtk_window_present(window);
  webkit_web_view_load_html(view.get(),
                            "<body>text<script>let count = 0; setInterval(() => {"
                            "document.body.style.marginTop = `${++count % 50}px`; }, 10)</script>",
                            nullptr);
  EXPECT_TRUE(runUntil([&] { return evaluate(view.get(), "count > 100") == "true"; }))
      << "the window has long come by then";
  EXPECT_TRUE(runUntil([&] { return framesWithin(GTK_WIDGET(view.get()), 200) > 3; }));
  gtk_window_destroy(window);
}

}  // namespace
}  // namespace lumisk::test
