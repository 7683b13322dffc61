#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/headless/main_queue.h"
#include "platform/platform.h"

namespace lumisk {

/// Background work on a few threads, started when there is work for them.
///
/// Nothing outlives the object: its destructor waits for the tasks that are under way and drops
/// those that have not begun. A task that waits for the main thread (`MainQueue::sync`) must
/// therefore have been seen through by `runUntilSettled` before.
class HeadlessBackgroundQueue final : public BackgroundQueue {
 public:
  /// `mainQueue` is borrowed; it is sent an empty task after each piece of work, so that whoever
  /// waits there learns that the work has ended.
  explicit HeadlessBackgroundQueue(HeadlessMainQueue& mainQueue, std::size_t maxThreads = 2);
  ~HeadlessBackgroundQueue() override;
  HeadlessBackgroundQueue(const HeadlessBackgroundQueue&) = delete;
  HeadlessBackgroundQueue& operator=(const HeadlessBackgroundQueue&) = delete;

  void async(Task task) override;

  /// Whether work waits or is under way. What a finished task queued on the main queue is there
  /// before this turns false.
  bool isBusy() const;

 private:
  void startThread();
  void work();

  HeadlessMainQueue& mainQueue_;
  const std::size_t maxThreads_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Task> tasks_;
  std::size_t running_ = 0;
  bool isClosed_ = false;
  std::vector<std::thread> threads_;
};

/// Runs the main queue until it is idle and all background work, that started meanwhile included,
/// has ended and landed. On the main thread only.
void runUntilSettled(HeadlessMainQueue& mainQueue, const HeadlessBackgroundQueue& backgroundQueue);

}  // namespace lumisk
