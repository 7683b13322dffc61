// The moment between a request and the window: it lets the engine take the page up first, so that
// the two draw side by side.

#include "desktop/curtain.h"
#include "panel_test.h"

namespace lumisk::test {
namespace {

class ComingPanel : public PanelTest {
 protected:
  /// A panel with a warm web view, closed.
  ComingPanel() {
    writeAll(folder_ / "hangs.md", "# Hangs\n\n</script><script>while (true);</script>");
    open("data.csv");
    panel_->close();
    closings_ = finishedLoads_ = 0;
    EXPECT_TRUE(runUntil([] { return Program::shared().liveViews.hasWarmView(); }));
    runFor(300);
  }
  void request(const char* name) { panel_->show(FileURL::fromPath((folder_ / name).string())); }
  bool isOnScreen() const { return gtk_widget_get_mapped(GTK_WIDGET(panel_->window())) == TRUE; }
  bool appears() {
    return runUntil([&] { return isOnScreen(); });
  }
  std::string title() const { return gtk_window_get_title(panel_->window()); }
};

TEST_F(ComingPanel, CountsAsShownFromTheRequestOn) {
  request("long.md");
  EXPECT_FALSE(isOnScreen());
  EXPECT_TRUE(panel_->isVisible());
  EXPECT_TRUE(appears());
  EXPECT_TRUE(panel_->isVisible());
  EXPECT_EQ(title(), "long.md");
}

TEST_F(ComingPanel, ComesWhenTheEngineHasItsAnswers) {
  const std::function<void()> takenUp = panel_->webViews().onTakenUp;
  bool isTakenUp = false;
  panel_->webViews().onTakenUp = [&] {
    if (isOnScreen()) return takenUp();
    if (!isTakenUp) {
      EXPECT_TRUE(panel_->webViews().isTakingUp()) << "the rest it does alone";
    }
    isTakenUp = true;
    takenUp();
  };
  request("long.md");
  // Not by the clock: it has been stopped where the engine was slow.
  ASSERT_TRUE(runUntil([&] { return isTakenUp || isOnScreen(); }));
  if (!isTakenUp) GTEST_SKIP() << "the engine has taken longer than anybody waits";
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
  EXPECT_TRUE(isOnScreen());
}

TEST_F(ComingPanel, DoesNotWaitForAnEngineThatIsHeldUp) {
  request("hangs.md");
  ASSERT_TRUE(appears());
  runFor(500);
  ASSERT_EQ(finishedLoads_, 0);
  panel_->close();
  panel_->webViews().onTakenUp = nullptr;  // as long as it may take
  request("data.csv");
  EXPECT_TRUE(appears());
  EXPECT_EQ(finishedLoads_, 0);
  EXPECT_TRUE(runUntil([&] { return finishedLoads_ > 0; }));
}

TEST_F(ComingPanel, UncoversNoPageBeforeItHasItsPlace) {
  // The window of a document is taller than that of a table.
  request("long.md");
  bool isUncovered = false;
  ASSERT_TRUE(runUntil([&] {
    if (!isUncovered && !desktop::isCurtainClosed(page())) {
      isUncovered = true;
      EXPECT_TRUE(desktop::placementOf(page()).isCurrent);
    }
    return isUncovered && finishedLoads_ > 0;
  }));
  const desktop::Placement placement = desktop::placementOf(page());
  EXPECT_EQ(evaluate(page(), "String(innerWidth)"), std::to_string(placement.width));
  EXPECT_EQ(evaluate(page(), "String(innerHeight)"), std::to_string(placement.height));
}

TEST_F(ComingPanel, APageNeverFindsAWidthOfZero) {
  writeAll(folder_ / "measures.md",
           "# Measures\n\n</script><script>window.found = innerWidth;</script>");
  desktop::LiveViews fresh(Program::shared().engine);
  fresh.warmUp();
  desktop::Panel panel(Program::shared().platform.platform(), fresh);
  bool isFinished = false;
  panel.onPageFinished = [&] { isFinished = true; };
  runFor(1500);  // the empty page is there
  panel.show(FileURL::fromPath((folder_ / "measures.md").string()));
  EXPECT_TRUE(gtk_widget_get_visible(GTK_WIDGET(panel.window()))) << "to give the view a size";
  ASSERT_TRUE(runUntil([&] { return isFinished; }));
  EXPECT_GT(std::stoi(evaluate(panel.webViews().latestView(), "String(window.found)")), 100);
}

TEST_F(ComingPanel, DoesNotComeWhenItWasClosedBefore) {
  request("long.md");
  ASSERT_FALSE(isOnScreen());
  panel_->close();
  EXPECT_EQ(closings_, 1);
  EXPECT_FALSE(panel_->isVisible());
  runFor(300);
  EXPECT_FALSE(isOnScreen());
  request("long.md");
  EXPECT_TRUE(appears());
}

TEST_F(ComingPanel, ComesWithTheLastOfSeveral) {
  for (const char* const name : {"long.md", "data.csv", "next.html"}) request(name);
  EXPECT_TRUE(appears());
  EXPECT_EQ(title(), "next.html");
  EXPECT_TRUE(runUntil([&] { return finishedLoads_ > 0; }));
  EXPECT_EQ(evaluate(page(), "document.body.textContent.includes('Next')"), "true");
}

TEST_F(ComingPanel, WaitsForNoPageWhereThereIsNone) {
  for (const char* const name : {"picture.png", "missing.md", ""}) {
    SCOPED_TRACE(name);
    request("long.md");
    ASSERT_FALSE(isOnScreen());
    request(name);
    EXPECT_TRUE(isOnScreen());
    panel_->close();
  }
}

TEST_F(ComingPanel, IsNotBroughtForwardBeforeItComes) {
  request("long.md");
  panel_->present();
  EXPECT_FALSE(isOnScreen());
  EXPECT_TRUE(appears());
}

}  // namespace
}  // namespace lumisk::test
