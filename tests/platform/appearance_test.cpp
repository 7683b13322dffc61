#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "platform/platform.h"

namespace lumisk {
namespace {

// The thread that made it is the main one; it runs one task when told to.
class OneTaskQueue final : public MainQueue {
 public:
  bool isMainThread() const override { return std::this_thread::get_id() == main_; }
  void async(Task) override { ADD_FAILURE() << "the flag needs its answer at once"; }
  void sync(const Task& task) override {
    std::unique_lock lock(mutex_);
    task_ = &task;
    changed_.notify_all();
    changed_.wait(lock, [&] { return task_ == nullptr; });
  }
  void waitForTaskAndRunIt() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return task_ != nullptr; });
    (*task_)();
    ++tasksRun;
    task_ = nullptr;
    changed_.notify_all();
  }
  int tasksRun = 0;

 private:
  const std::thread::id main_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::condition_variable changed_;
  const Task* task_ = nullptr;
};

class SettableAppearance final : public Appearance {
 public:
  AppearanceMatch bestMatch() const override {
    askedOn = std::this_thread::get_id();
    return match;
  }
  AppearanceMatch match = AppearanceMatch::Light;
  mutable std::thread::id askedOn;
};

TEST(Appearance, IsReadAfreshOnTheMainThreadWithoutAHop) {
  OneTaskQueue queue;
  SettableAppearance appearance;
  EXPECT_FALSE(isDarkMode(queue, appearance));
  appearance.match = AppearanceMatch::Dark;
  EXPECT_TRUE(isDarkMode(queue, appearance));
  appearance.match = AppearanceMatch::Light;
  EXPECT_FALSE(isDarkMode(queue, appearance));
}

TEST(Appearance, WithoutAMatchIsLight) {
  OneTaskQueue queue;
  SettableAppearance appearance;
  appearance.match = AppearanceMatch::None;
  EXPECT_FALSE(isDarkMode(queue, appearance));
}

TEST(Appearance, OffTheMainThreadTheMainQueueRunsTheTest) {
  for (const AppearanceMatch match :
       {AppearanceMatch::Light, AppearanceMatch::Dark, AppearanceMatch::None}) {
    OneTaskQueue queue;
    SettableAppearance appearance;
    appearance.match = match;
    bool isDark = match != AppearanceMatch::Dark;
    std::thread other([&] { isDark = isDarkMode(queue, appearance); });
    queue.waitForTaskAndRunIt();
    other.join();
    EXPECT_EQ(isDark, match == AppearanceMatch::Dark);
    EXPECT_EQ(appearance.askedOn, std::this_thread::get_id());
    EXPECT_EQ(queue.tasksRun, 1);
  }
}

}  // namespace
}  // namespace lumisk
