#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>

#include "platform/platform.h"

namespace lumisk {

/// A main queue run by hand: the thread that makes the object is the main one, and tasks run when
/// that thread says so. Tasks that never get their turn are dropped with the object.
class HeadlessMainQueue final : public MainQueue {
 public:
  HeadlessMainQueue() = default;

  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }
  void async(Task task) override;
  void sync(const Task& task) override;

  // For the main thread only:

  /// Runs tasks, those that the tasks queue included, until none is left. Returns how many ran.
  std::size_t runUntilIdle();
  /// Runs the first task if there is one, and says whether there was.
  bool runOne();
  /// Sleeps until there is a task.
  void waitForTask();
  /// How many tasks wait.
  std::size_t size() const;

 private:
  const std::thread::id mainThread_ = std::this_thread::get_id();
  mutable std::mutex mutex_;
  std::condition_variable taskCame_;
  std::deque<Task> tasks_;
};

}  // namespace lumisk
