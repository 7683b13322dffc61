// An item so large that it is made ready on another thread, while the panel goes on.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "desktop/curtain.h"
#include "folder/folder_preview_view.h"
#include "large_item_test.h"

namespace lumisk::test {
namespace {

TEST_F(LargeItem, HasTheWindowComeBeforeItIsReady) {
  request("large.txt");
  EXPECT_EQ(queue_.size(), 1U);
  ASSERT_TRUE(runUntil([&] { return isOnScreen(); }));
  ASSERT_TRUE(runUntil([&] { return isWaiting(); }));
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "large.txt");
  runFor(200);
  EXPECT_LT(gtk_widget_get_width(wheels().front()), 100) << "not all over";
  const int width = gtk_widget_get_width(GTK_WIDGET(panel_->window()));
  queue_.runAll();
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(isLoaded());
  EXPECT_NE(evaluate(page(), "document.body.innerText").find("a line of a long log"),
            std::string::npos);
  EXPECT_TRUE(runUntil([&] { return wheels().empty(); }));
  EXPECT_TRUE(hasDocumentFocus());
  EXPECT_EQ(gtk_widget_get_width(GTK_WIDGET(panel_->window())), width) << "the document's size";
}

TEST_F(LargeItem, HasItsWheelTurnUntilItsPageCanBeSeen) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return isWaiting(); }));
  GtkWidget* const wheel = wheels().front();
  queue_.runAll();
  ASSERT_TRUE(isShown());
  // The engine has the page; nothing of it is drawn before the next turn of the main loop.
  ASSERT_TRUE(desktop::isCurtainClosed(page()));
  EXPECT_THAT(wheels(), testing::ElementsAre(wheel)) << "the same one, which goes on turning";
  ASSERT_TRUE(runUntil([&] { return wheels().empty(); }));
  EXPECT_FALSE(desktop::isCurtainClosed(page()));
}

TEST_F(LargeItem, HasItsWheelTurnInAnotherModeToo) {
  request("large.json");
  queue_.runAll();
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(runUntil([&] { return !desktop::isCurtainClosed(page()); }));
  EXPECT_TRUE(allWheels().empty());
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  ASSERT_TRUE(desktop::isCurtainClosed(page()));
  EXPECT_EQ(allWheels().size(), 1U) << "another page is to come";
  EXPECT_TRUE(runUntil([&] { return !desktop::isCurtainClosed(page()); }));
  EXPECT_TRUE(allWheels().empty());
}

TEST_F(LargeItem, WhoseProcessEndsTurnsNoMore) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return isWaiting(); }));
  queue_.runAll();
  ASSERT_TRUE(isShown());
  webkit_web_view_terminate_web_process(page());
  ASSERT_TRUE(runUntil([&] { return panel_->webViews().latestView() == nullptr; }));
  EXPECT_TRUE(allWheels().empty());
}

TEST_F(LargeItem, WhoseViewHasAWheelOfItsOwnShowsThatOne) {
  request("large.md");
  ASSERT_TRUE(runUntil([&] { return isWaiting(); }));
  queue_.runAll();
  ASSERT_TRUE(isShown());
  EXPECT_EQ(wheels().size(), 1U);
  EXPECT_TRUE(desktop::holdsWheel(panel_->content()));
}

TEST_F(LargeItem, WhoseSourceIsReadShowsNoWheelOverIt) {
  request("large.md");
  queue_.runAll();
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  ASSERT_TRUE(desktop::isCurtainClosed(page())) << "the page is still to come";
  EXPECT_EQ(allWheels().size(), 1U) << "the view's own, in the layer that is not shown";
  EXPECT_TRUE(desktop::holdsWheel(allWheels().front())) << "hidden by its layer alone";
  EXPECT_FALSE(desktop::holdsWheel(panel_->content()));
}

TEST_F(LargeItem, LeavesSmallOnesAsTheyAre) {
  request("small.txt");
  EXPECT_EQ(queue_.size(), 0U);
  EXPECT_NE(panel_->presentation(), nullptr);
}

TEST_F(LargeItem, HasItsPageBuiltAndWrittenOnTheOtherThread) {
  for (const char* name : {"large.txt", "large.json"}) {
    request("small.txt");
    const std::string small = pageFile();
    finishedLoads_ = 0;
    request(name);
    queue_.runAll();
    EXPECT_EQ(pageFile(), small) << "nobody has taken it up yet";
    const auto written = writtenPages();
    ASSERT_EQ(written.size(), 1U) << name;
    struct stat there = {};
    ASSERT_EQ(::stat(written.front().c_str(), &there), 0);
    ASSERT_TRUE(isShown());
    struct stat file = {};
    ASSERT_EQ(::stat((pages() / "preview.html").c_str(), &file), 0);
    EXPECT_EQ(file.st_ino, there.st_ino) << name << " is not written again";
    EXPECT_TRUE(writtenPages().empty());
    EXPECT_TRUE(isLoaded());
  }
}

TEST_F(LargeItem, HasItsWebViewStartedMeanwhile) {
  desktop::LiveViews none(Program::shared().engine);
  desktop::Panel panel(Program::shared().platform.platform(), none, queue_);
  panel.show(FileURL::fromPath((folder_ / "large.txt").string()));
  EXPECT_TRUE(none.hasWarmView());
}

TEST_F(LargeItem, GivesWayToTheNext) {
  request("large.txt");
  request("large.json");
  request("small.txt");
  ASSERT_NE(panel_->presentation(), nullptr);
  const std::string small = pageFile();
  queue_.runAll();
  runFor(100);
  EXPECT_EQ(pageFile(), small);
  EXPECT_TRUE(writtenPages().empty());
  ASSERT_TRUE(isLoaded());
  EXPECT_NE(evaluate(page(), "document.body.innerText").find("small"), std::string::npos);
}

TEST_F(LargeItem, ThatIsReadyTooLateIsNotShown) {
  request("large.txt");
  queue_.runAll();  // its result waits for the main loop
  request("small.txt");
  const std::string small = pageFile();
  runFor(100);
  EXPECT_EQ(pageFile(), small);
  EXPECT_TRUE(writtenPages().empty());
}

TEST_F(LargeItem, ClosedMeanwhileStaysClosed) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return isOnScreen(); }));
  panel_->close();
  EXPECT_EQ(closings_, 1);
  queue_.runAll();
  runFor(100);
  EXPECT_FALSE(isOnScreen());
  EXPECT_EQ(panel_->presentation(), nullptr);
  EXPECT_EQ(panel_->content(), nullptr);
}

TEST_F(LargeItem, OutlivesItsPanelOnTheOtherThread) {
  request("large.txt");
  panel_.reset();
  queue_.runAll();
  runFor(100);
  EXPECT_TRUE(writtenPages().empty());
}

TEST_F(LargeItem, ThatIsNoTextSaysSo) {
  request("large.bin");
  ASSERT_TRUE(runUntil([&] { return isOnScreen(); }));
  queue_.runAll();
  ASSERT_TRUE(runUntil([&] { return !textOfTheContent().empty(); }));
  EXPECT_EQ(panel_->presentation(), nullptr);
  EXPECT_NE(textOfTheContent().find("large.bin"), std::string::npos);
}

TEST_F(LargeItem, IsShownAtTheZoomThatWasChosenMeanwhile) {
  request("large.txt");
  panel_->perform(desktop::Command::ZoomIn);
  const double zoom = panel_->zoom();
  ASSERT_GT(zoom, 1);
  queue_.runAll();
  ASSERT_TRUE(isShown());
  EXPECT_DOUBLE_EQ(webkit_web_view_get_zoom_level(page()), zoom);
}

TEST_F(LargeItem, ThatIsAFolderIsListedOnceTheWindowHasTurnedToIt) {
  makeLargeFolder(folder_ / "large folder");
  request("large folder");
  EXPECT_TRUE(isOnScreen());
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "large folder");
  EXPECT_EQ(queue_.size(), 0U);
  int framesBefore = 0;
  const auto count = +[](GdkFrameClock*, gpointer frames) { ++*static_cast<int*>(frames); };
  {
    const desktop::SignalHandler drawn(gtk_widget_get_frame_clock(GTK_WIDGET(panel_->window())),
                                       "after-paint", G_CALLBACK(count), &framesBefore);
    ASSERT_TRUE(runUntil([&] { return framesBefore > 0 || panel_->presentation() != nullptr; }));
  }
  EXPECT_GT(framesBefore, 0);
  EXPECT_EQ(panel_->presentation(), nullptr);
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(runUntil([&] { return desktop::findShownDocument(panel_->content()).scrolled; }));
  runFor(200);
  EXPECT_TRUE(wheels().empty());
}

TEST_F(LargeItem, ThatIsAFolderIsNotListedForWhoWalksPastIt) {
  makeLargeFolder(folder_ / "large folder");
  request("large folder");
  request("small.txt");
  ASSERT_NE(panel_->presentation(), nullptr);
  runFor(200);
  EXPECT_NE(panel_->webViews().latestView(), nullptr) << "the file is still shown";
  EXPECT_EQ(queue_.size(), 0U) << "nor is the folder's size summed up";
}

TEST_F(LargeItem, ThatHasBecomeAFolderIsShownAsOne) {
  request("large.txt");
  fs::remove(folder_ / "large.txt");
  fs::create_directory(folder_ / "large.txt");
  writeAll(folder_ / "large.txt/inside", "x");
  panel_->perform(desktop::Command::Find);
  EXPECT_TRUE(panel_->findBar().isOpen());
  queue_.runAll();
  ASSERT_TRUE(isShown());
  ASSERT_NE(panel_->presentation()->view(), nullptr);
  EXPECT_NE(panel_->presentation()->view()->as<FolderPreviewView>(), nullptr);
  EXPECT_FALSE(panel_->findBar().isOpen()) << "there is nothing to find in a folder";
}

TEST_F(LargeItem, ThatHasGoneIsSaidToBe) {
  request("large.txt");
  fs::remove(folder_ / "large.txt");
  queue_.runAll();
  ASSERT_TRUE(runUntil([&] { return !panel_->isMakingReady(); }));
  EXPECT_TRUE(textOfTheContent().starts_with("large.txt\nThis item is no longer there.\n"));
}

TEST_F(LargeItem, HasTheAppearanceOfTheMomentWhenItIsShown) {
  const auto turn = [](AdwColorScheme scheme) {
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), scheme);
  };
  turn(ADW_COLOR_SCHEME_FORCE_LIGHT);
  request("large.txt");
  queue_.runAll();
  turn(ADW_COLOR_SCHEME_FORCE_DARK);
  ASSERT_TRUE(runUntil([&] { return queue_.size() == 1; })) << "made anew";
  EXPECT_EQ(panel_->presentation(), nullptr);
  queue_.runAll();
  ASSERT_TRUE(isShown());
  EXPECT_NE(pageFile().find("#1e1e1e"), std::string::npos);
  turn(ADW_COLOR_SCHEME_DEFAULT);
}

TEST_F(LargeItem, LeavesTheKeysToTheMenuThatWasOpenedMeanwhile) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  press("F10");
  const auto isInMenu = [&] {
    return focus() != nullptr && gtk_widget_get_ancestor(focus(), GTK_TYPE_POPOVER) != nullptr;
  };
  ASSERT_TRUE(runUntil(isInMenu));
  queue_.runAll();
  ASSERT_TRUE(isShown());
  runFor(100);
  EXPECT_TRUE(isInMenu());
  press("Escape");
  EXPECT_TRUE(runUntil([&] { return !isInMenu(); }));
}

// The threads that make items ready in earnest, beside a person who goes from one to the next.
TEST_F(LargeItem, LeavesNothingBehindWhenManyAreGivenUp) {
  desktop::GlibBackgroundQueue queue(2);
  makePanel(queue);
  const char* const names[] = {"large.txt", "large.json", "large.bin", "small.txt"};
  for (int i = 0; i < 40; ++i) {
    request(names[i % 4]);
    runFor(static_cast<unsigned>(i % 5) * 4);
    if (i % 7 == 0) panel_->close();
    if (i % 13 == 0) makePanel(queue);
  }
  request("large.json");
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(isLoaded());
  EXPECT_TRUE(runUntil([] { return writtenPages().empty(); })) << "also of those under way";
  EXPECT_NE(evaluate(page(), "document.body.innerText").find("tide"), std::string::npos);
}

TEST_F(LargeItem, MayBeAskedForAnew) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return isOnScreen(); }));
  panel_->perform(desktop::Command::Reload);
  EXPECT_EQ(queue_.size(), 2U);
  queue_.runAll();
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(isLoaded());
}

}  // namespace
}  // namespace lumisk::test
