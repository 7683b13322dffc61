#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

#include "platform/headless/background_queue.h"
#include "platform/headless/headless_platform.h"
#include "platform/headless/main_queue.h"

namespace lumisk {
namespace {

TEST(HeadlessMainQueue, RunsTasksInOrderAndOnlyWhenTold) {
  HeadlessMainQueue queue;
  std::vector<int> ran;
  queue.async([&] { ran.push_back(1); });
  queue.async([&] { ran.push_back(2); });
  EXPECT_TRUE(ran.empty());
  EXPECT_EQ(queue.runUntilIdle(), 2U);
  EXPECT_EQ(ran, std::vector({1, 2}));
  EXPECT_EQ(queue.runUntilIdle(), 0U);
}

TEST(HeadlessMainQueue, ATaskQueuedByATaskRunsInALaterTurn) {
  HeadlessMainQueue queue;
  std::vector<int> ran;
  queue.async([&] {
    queue.async([&] { ran.push_back(3); });
    ran.push_back(1);
  });
  queue.async([&] { ran.push_back(2); });
  EXPECT_TRUE(queue.runOne());
  EXPECT_EQ(ran, std::vector({1}));
  queue.runUntilIdle();
  EXPECT_EQ(ran, std::vector({1, 2, 3}));
}

TEST(HeadlessMainQueue, KnowsItsThread) {
  HeadlessMainQueue queue;
  EXPECT_TRUE(queue.isMainThread());
  bool isMainElsewhere = true;
  std::thread([&] { isMainElsewhere = queue.isMainThread(); }).join();
  EXPECT_FALSE(isMainElsewhere);
}

TEST(HeadlessMainQueue, SyncReturnsWhenTheTaskHasRunOnTheMainThread) {
  HeadlessMainQueue queue;
  bool ranOnMain = false;
  bool wasDoneAfterwards = false;
  std::thread other([&] {
    queue.sync([&] { ranOnMain = queue.isMainThread(); });
    wasDoneAfterwards = ranOnMain;
  });
  queue.waitForTask();
  EXPECT_TRUE(queue.runOne());
  other.join();
  EXPECT_TRUE(wasDoneAfterwards);
}

TEST(HeadlessBackgroundQueue, RunsOffTheMainThreadAndLands) {
  HeadlessMainQueue mainQueue;
  HeadlessBackgroundQueue background(mainQueue);
  std::optional<bool> wasMain;
  bool landed = false;
  background.async([&] {
    wasMain = mainQueue.isMainThread();
    mainQueue.async([&] { landed = true; });
  });
  runUntilSettled(mainQueue, background);
  EXPECT_EQ(wasMain, false);
  EXPECT_TRUE(landed);
  EXPECT_FALSE(background.isBusy());
}

TEST(HeadlessBackgroundQueue, SettlingFollowsWorkThatStartsWork) {
  HeadlessMainQueue mainQueue;
  HeadlessBackgroundQueue background(mainQueue);
  int landed = 0;
  std::function<void(int)> start = [&](int left) {
    background.async([&, left] {
      mainQueue.async([&, left] {
        ++landed;
        if (left > 1) start(left - 1);
      });
    });
  };
  start(20);
  runUntilSettled(mainQueue, background);
  EXPECT_EQ(landed, 20);
}

TEST(HeadlessBackgroundQueue, ManyTasksFromManyThreads) {
  HeadlessMainQueue mainQueue;
  HeadlessBackgroundQueue background(mainQueue, 4);
  std::atomic<int> ran = 0;
  int landed = 0;
  std::vector<std::thread> callers;
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      for (int j = 0; j < 100; ++j) {
        background.async([&] {
          ++ran;
          mainQueue.async([&] { ++landed; });
        });
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  runUntilSettled(mainQueue, background);
  EXPECT_EQ(ran, 400);
  EXPECT_EQ(landed, 400);
}

TEST(HeadlessBackgroundQueue, ItsEndWaitsForWhatIsUnderWayAndDropsTheRest) {
  HeadlessMainQueue mainQueue;
  std::atomic<bool> hasBegun = false;
  bool hasEnded = false;
  bool ranSecond = false;
  auto held = std::make_shared<int>();
  {
    HeadlessBackgroundQueue background(mainQueue, 1);
    background.async([&, second = std::weak_ptr<int>(held)] {
      hasBegun = true;
      hasBegun.notify_all();
      while (!second.expired()) std::this_thread::yield();  // until the end has begun
      hasEnded = true;
    });
    background.async([&, held = std::move(held)] { ranSecond = held != nullptr; });
    hasBegun.wait(false);
  }
  EXPECT_TRUE(hasEnded);
  EXPECT_FALSE(ranSecond);
}

TEST(HeadlessBackgroundQueue, WhatATaskHoldsIsLetGoBeforeTheWorkCountsAsDone) {
  HeadlessMainQueue mainQueue;
  HeadlessBackgroundQueue background(mainQueue);
  auto held = std::make_shared<int>(1);
  background.async([held] {});
  runUntilSettled(mainQueue, background);
  EXPECT_EQ(held.use_count(), 1);
}

TEST(HeadlessPlatform, AppearanceIsTheSetting) {
  const HeadlessPlatform light;
  EXPECT_FALSE(isDarkMode(light.platform().mainQueue, light.platform().appearance));
  HeadlessOptions options;
  options.appearance = AppearanceMatch::Dark;
  const HeadlessPlatform dark(options);
  EXPECT_TRUE(isDarkMode(dark.platform().mainQueue, dark.platform().appearance));
}

TEST(HeadlessPlatform, BackgroundWorkMayAskForTheAppearance) {
  HeadlessOptions options;
  options.appearance = AppearanceMatch::Dark;
  HeadlessPlatform desktop(options);
  bool isDark = false;
  desktop.platform().backgroundQueue.async(
      [&] { isDark = isDarkMode(desktop.platform().mainQueue, desktop.platform().appearance); });
  desktop.runUntilSettled();
  EXPECT_TRUE(isDark);
}

TEST(HeadlessPlatform, StandardOutputWritesOneLine) {
  testing::internal::CaptureStdout();
  HeadlessPlatform().platform().standardOutput.writeLine("Failed");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed\n");
}

}  // namespace
}  // namespace lumisk
