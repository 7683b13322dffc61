#include "platform/headless/background_queue.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace lumisk {

HeadlessBackgroundQueue::HeadlessBackgroundQueue(HeadlessMainQueue& mainQueue,
                                                 std::size_t maxThreads)
    : mainQueue_(mainQueue), maxThreads_(std::max<std::size_t>(maxThreads, 1)) {}

HeadlessBackgroundQueue::~HeadlessBackgroundQueue() {
  {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    tasks_.clear();
    changed_.notify_all();
  }
  for (std::thread& thread : threads_) thread.join();
}

void HeadlessBackgroundQueue::async(Task task) {
  {
    const std::lock_guard lock(mutex_);
    if (isClosed_) return;
    const bool allAreBusy = running_ + tasks_.size() >= threads_.size();
    if (allAreBusy && threads_.size() < maxThreads_) startThread();
    if (!threads_.empty()) {
      tasks_.push_back(std::move(task));
      changed_.notify_one();
      return;
    }
  }
  task();  // no thread is to be had at all: late is better than never
}

void HeadlessBackgroundQueue::startThread() {
  try {
    threads_.emplace_back([this] { work(); });
  } catch (const std::system_error&) {
    return;  // those that there are do the work
  }
}

bool HeadlessBackgroundQueue::isBusy() const {
  const std::lock_guard lock(mutex_);
  return running_ > 0 || !tasks_.empty();
}

void HeadlessBackgroundQueue::work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return isClosed_ || !tasks_.empty(); });
    if (isClosed_) return;
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    ++running_;
    lock.unlock();
    task();
    task = nullptr;  // what it holds goes before the work counts as done
    lock.lock();
    --running_;
    mainQueue_.async([] {});
  }
}

void runUntilSettled(HeadlessMainQueue& mainQueue, const HeadlessBackgroundQueue& backgroundQueue) {
  while (true) {
    mainQueue.runUntilIdle();
    if (backgroundQueue.isBusy()) {
      mainQueue.waitForTask();
    } else if (mainQueue.size() == 0) {
      return;
    }
  }
}

}  // namespace lumisk
