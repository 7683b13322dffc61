#pragma once

#include <cstddef>
#include <thread>
#include <utility>
#include <vector>

#include "platform/platform.h"

namespace lumisk::test {

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
  std::vector<Task> tasks_;
};

}  // namespace lumisk::test
