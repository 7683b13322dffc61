#include "desktop/gtk_platform.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

#include "support/files.h"

namespace lumisk::desktop {
namespace {

using test::TemporaryFolder;
using test::writeAll;

/// Something that happens on one thread and is waited for on another. Copies are the same event, so
/// that a task can have its own, whoever goes first.
class Event {
 public:
  void happen() const {
    const std::lock_guard lock(state_->mutex);
    state_->hasHappened = true;
    state_->changed.notify_all();
  }
  void wait() const {
    std::unique_lock lock(state_->mutex);
    state_->changed.wait(lock, [this] { return state_->hasHappened; });
  }

 private:
  struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool hasHappened = false;
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

/// A task that waits until it is told to end.
struct LongTask {
  Event hasBegun;
  Event mayEnd;
  Event hasEnded;

  void operator()() const {
    hasBegun.happen();
    mayEnd.wait();
    hasEnded.happen();
  }
};

TEST(GlibBackgroundQueue, ItsEndWaitsForNoTask) {
  const LongTask task;
  {
    GlibBackgroundQueue queue;
    queue.async(task);
    task.hasBegun.wait();
  }
  // Reached although the task is still waiting.
  task.mayEnd.happen();
  task.hasEnded.wait();
}

TEST(GlibBackgroundQueue, WhatHasNotBegunIsLetGoOfAtTheEnd) {
  const LongTask tasks[2];  // as many as there are threads
  const auto held = std::make_shared<std::atomic<bool>>(false);
  {
    GlibBackgroundQueue queue;
    for (const LongTask& task : tasks) queue.async(task);
    for (const LongTask& task : tasks) task.hasBegun.wait();
    queue.async([held] { *held = true; });
    EXPECT_EQ(held.use_count(), 2);
  }
  EXPECT_EQ(held.use_count(), 1) << "on this thread, before the queue has gone";
  for (const LongTask& task : tasks) task.mayEnd.happen();
  for (const LongTask& task : tasks) task.hasEnded.wait();
  EXPECT_FALSE(*held);
}

TEST(GlibBackgroundQueue, RunsWhatItIsGiven) {
  GlibBackgroundQueue queue;
  const std::vector<LongTask> tasks(100);
  for (const LongTask& task : tasks) {
    task.mayEnd.happen();
    queue.async(task);
  }
  for (const LongTask& task : tasks) task.hasEnded.wait();
}

TEST(GioIcons, AreChosenByNameAndKind) {
  const TemporaryFolder folder;
  const GioIcons icons;
  // By the name alone: nothing is there.
  EXPECT_EQ(icons.iconForFile("/nowhere/at/all", true).name, "folder");
  EXPECT_EQ(icons.iconForFile("/nowhere/at/all.folder", true).name, "folder");
  EXPECT_EQ(icons.iconForFile("/nowhere/a.png", false), icons.iconForFile("/nowhere/b.png", false));
  EXPECT_NE(icons.iconForFile("/nowhere/a.png", false).name, "folder");
  EXPECT_NE(icons.iconForFile("/nowhere/a.png", false), icons.iconForFile("/nowhere/a.c", false));
  EXPECT_NE(icons.iconForFile("/nowhere/a", std::nullopt).name, "");
}

TEST(GioIcons, WhereNobodySaysWhatItIsTheItemIsLookedAt) {
  const TemporaryFolder folder;
  const GioIcons icons;
  std::filesystem::create_directory(folder / "a.png");
  writeAll(folder / "b.png", "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(icons.iconForFile((folder / "a.png").native(), std::nullopt).name,
            icons.iconForFile("/", std::nullopt).name);
  EXPECT_EQ(icons.iconForFile((folder / "b.png").native(), std::nullopt),
            icons.iconForFile("/nowhere/b.png", false));
}

/// Each in a process of its own: the library asks for the person's folder once.
class CachesDirectoryDeathTest : public testing::Test {
 protected:
  CachesDirectoryDeathTest() { testing::GTEST_FLAG(death_test_style) = "threadsafe"; }

  static int statusWhenThePersonsIsUsed() {
    setenv("XDG_CACHE_HOME", "/persons/caches", 1);
    return DesktopCachesDirectory().path() == "/persons/caches" ? 0 : 1;
  }
  static int statusWhenAFolderOfItsOwnIsMadeAndRemoved() {
    setenv("XDG_CACHE_HOME", "not/absolute", 1);
    std::string own;
    {
      const DesktopCachesDirectory caches;
      own = caches.path().value_or("");
      if (caches.path() != own || !std::filesystem::is_directory(own)) return 1;
      std::filesystem::create_directory(own + "/LumiskHTML");
      writeAll(own + "/LumiskHTML/preview.html", "a page");
      writeAll(own + "/LumiskHTML/.preview-1.tmp", "a page that nobody has taken up");
    }
    return std::filesystem::exists(own) ? 2 : 0;
  }
};

TEST_F(CachesDirectoryDeathTest, IsThePersons) {
  EXPECT_EXIT(std::exit(statusWhenThePersonsIsUsed()), testing::ExitedWithCode(0), "");
}

TEST_F(CachesDirectoryDeathTest, IsAFolderOfItsOwnWhereThePersonsIsNone) {
  EXPECT_EXIT(std::exit(statusWhenAFolderOfItsOwnIsMadeAndRemoved()), testing::ExitedWithCode(0),
              "");
}

}  // namespace
}  // namespace lumisk::desktop
