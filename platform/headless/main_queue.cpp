#include "platform/headless/main_queue.h"

#include <future>
#include <utility>

namespace lumisk {

void HeadlessMainQueue::async(Task task) {
  // Notified under the lock: the main thread may drop the queue as soon as it has seen the task.
  const std::lock_guard lock(mutex_);
  tasks_.push_back(std::move(task));
  taskCame_.notify_one();
}

void HeadlessMainQueue::sync(const Task& task) {
  // The promise is shared, because the main thread may still be inside `set_value` when the waiting
  // thread returns.
  auto done = std::make_shared<std::promise<void>>();
  auto isDone = done->get_future();
  async([&task, done] {
    task();
    done->set_value();
  });
  isDone.wait();
}

bool HeadlessMainQueue::runOne() {
  Task task;
  {
    const std::lock_guard lock(mutex_);
    if (tasks_.empty()) return false;
    task = std::move(tasks_.front());
    tasks_.pop_front();
  }
  task();
  return true;
}

std::size_t HeadlessMainQueue::runUntilIdle() {
  std::size_t count = 0;
  while (runOne()) ++count;
  return count;
}

void HeadlessMainQueue::waitForTask() {
  std::unique_lock lock(mutex_);
  taskCame_.wait(lock, [this] { return !tasks_.empty(); });
}

std::size_t HeadlessMainQueue::size() const {
  const std::lock_guard lock(mutex_);
  return tasks_.size();
}

}  // namespace lumisk
