#include "folder/tree_size.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "folder/tree_walker.h"

namespace lumisk {
namespace {

/// So many folders are walked before a second thread is worth starting.
constexpr std::size_t kSmallTree = 32;

/// One tree, walked by several threads. Each goes depth first through a part of its own; one that
/// has finished sleeps until another gives it half of what that one has left.
class SharedWalk {
 public:
  explicit SharedWalk(std::size_t maxThreads) : maxThreads_(std::max<std::size_t>(maxThreads, 1)) {}

  std::int64_t run(FileDescriptor root) {
    TreeWalker walker;
    walker.startWith(std::move(root));
    for (std::size_t i = 0; i < kSmallTree; ++i) {
      if (!walker.step()) return walker.total();
    }
    startHelpers();
    work(walker);
    for (std::thread& helper : helpers_) helper.join();
    return total_;
  }

 private:
  void startHelpers() {
    walkers_ = maxThreads_;
    while (helpers_.size() + 1 < maxThreads_) {
      try {
        helpers_.emplace_back([this] {
          TreeWalker walker;
          work(walker);
        });
      } catch (const std::system_error&) {  // no more threads: fewer do
        const std::lock_guard lock(mutex_);
        walkers_ = helpers_.size() + 1;
        return;
      }
    }
  }

  void work(TreeWalker& walker) {
    do {
      while (walker.step()) {
        if (wanted_.load(std::memory_order_relaxed) > 0) give(walker);
      }
    } while (take(walker));
    const std::lock_guard lock(mutex_);
    total_ = checkedSum(total_, walker.total());
  }

  void give(TreeWalker& walker) {
    std::optional<FolderLevel> share = walker.split();
    if (!share) return;
    const std::lock_guard lock(mutex_);
    shares_.push_back(std::move(*share));
    --wanted_;
    changed_.notify_one();
  }

  /// Waits for a share. False when there will be none, because nobody is walking any more.
  bool take(TreeWalker& walker) {
    std::unique_lock lock(mutex_);
    ++idle_;
    ++wanted_;
    if (idle_ == walkers_) changed_.notify_all();
    changed_.wait(lock, [this] { return !shares_.empty() || idle_ == walkers_; });
    if (shares_.empty()) return false;
    walker.start(std::move(shares_.front()));
    shares_.pop_front();
    --idle_;
    return true;
  }

  const std::size_t maxThreads_;
  std::vector<std::thread> helpers_;
  std::atomic<int> wanted_ =
      0;  // how many sleep without a share on its way; a hint outside the lock

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<FolderLevel> shares_;
  std::size_t walkers_ = 1;
  std::size_t idle_ = 0;
  std::int64_t total_ = 0;
};

}  // namespace

std::int64_t allocatedSizeBelow(const std::string& path, std::size_t maxThreads) {
  FileDescriptor folder = openFolder(path.c_str());
  if (!folder.isOpen()) return 0;
  return SharedWalk(maxThreads).run(std::move(folder));
}

}  // namespace lumisk
