// An item so large that it is made ready on another thread, while the panel goes on.

#include <cstdint>
#include <deque>
#include <filesystem>
#include <mutex>
#include <thread>

#include "panel_test.h"

namespace lumisk::test {
namespace {

namespace fs = std::filesystem;

/// Work that waits until the test has it done, on a thread of its own.
class HeldQueue final : public BackgroundQueue {
 public:
  void async(Task task) override { tasks_.push_back(std::move(task)); }
  std::size_t size() const { return tasks_.size(); }
  void runAll() {
    std::thread([tasks = std::exchange(tasks_, {})] {
      for (const Task& task : tasks) task();
    }).join();
  }

 private:
  std::deque<Task> tasks_;
};

std::string repeated(const std::string& line, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) text += line;
  return text;
}

class LargeItem : public PanelTest {
 protected:
  LargeItem() {
    constexpr std::size_t kBytes = std::size_t{2} * 1024 * 1024;
    writeAll(folder_ / "large.txt", repeated("a line of a long log\n", kBytes));
    writeAll(folder_ / "large.json", "[" + repeated("{\"tide\": [1, 2]},", kBytes) + "0]");
    writeAll(folder_ / "large.bin", repeated("\xFF\xFE", kBytes));
    writeAll(folder_ / "small.txt", "small\n");
    panel_.reset();
    panel_ = std::make_unique<desktop::Panel>(platform_, Program::shared().liveViews);
    panel_->onPageFinished = [this] { ++finishedLoads_; };
    panel_->onClosed = [this] { ++closings_; };
  }

  void request(const char* name) { panel_->show(FileURL::fromPath((folder_ / name).string())); }
  bool isOnScreen() const { return gtk_widget_get_mapped(GTK_WIDGET(panel_->window())) == TRUE; }
  bool isWaiting() const { return panel_->isMakingReady() && hasWheel(panel_->content()); }
  static std::vector<GtkWidget*> wheelsIn(GtkWidget* widget) {
    if (widget == nullptr) return {};
    return shownBelow(widget, [](GtkWidget* each) { return GTK_IS_SPINNER(each) == TRUE; });
  }
  static bool hasWheel(GtkWidget* widget) { return !wheelsIn(widget).empty(); }
  bool isShown() {
    return runUntil([&] { return panel_->presentation() != nullptr; });
  }
  bool isLoaded() {
    return runUntil([&] { return finishedLoads_ > 0; });
  }
  fs::path pages() const { return fs::path(*platform_.caches.path()) / "LumiskHTML"; }
  std::string pageFile() const { return readAll(pages() / "preview.html"); }
  /// What lies beside the page file and is to take its place.
  std::vector<fs::path> writtenPages() const {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(pages()))
      if (entry.path().filename() != "preview.html") found.push_back(entry.path());
    return found;
  }

  HeldQueue queue_;
  Platform platform_ = [this] {
    const Platform& of = Program::shared().platform.platform();
    return Platform{of.mainQueue, queue_,   of.appearance,  of.strings, of.makeDateFormatter,
                    of.collation, of.icons, of.hiddenNames, of.caches,  of.standardOutput};
  }();
};

TEST_F(LargeItem, HasTheWindowComeBeforeItIsReady) {
  request("large.txt");
  EXPECT_EQ(queue_.size(), 1U);
  ASSERT_TRUE(runUntil([&] { return isOnScreen(); }));
  ASSERT_TRUE(runUntil([&] { return isWaiting(); }));
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "large.txt");
  runFor(200);
  EXPECT_LT(gtk_widget_get_width(wheelsIn(panel_->content()).front()), 100) << "not all over";
  const int width = gtk_widget_get_width(GTK_WIDGET(panel_->window()));
  queue_.runAll();
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(isLoaded());
  EXPECT_NE(evaluate(page(), "document.body.innerText").find("a line of a long log"),
            std::string::npos);
  EXPECT_FALSE(hasWheel(panel_->content()));
  EXPECT_TRUE(hasDocumentFocus());
  EXPECT_EQ(gtk_widget_get_width(GTK_WIDGET(panel_->window())), width) << "the document's size";
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
  EXPECT_EQ(panel_->presentation(), nullptr);
  EXPECT_TRUE(isOnScreen());
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "large folder");
  EXPECT_EQ(queue_.size(), 0U);
  ASSERT_TRUE(isShown());
  ASSERT_TRUE(runUntil([&] { return desktop::findShownDocument(panel_->content()).scrolled; }));
  runFor(200);
  EXPECT_FALSE(hasWheel(panel_->content()));
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
