#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/date_formatter.h"
#include "platform/headless/headless_platform.h"
#include "support/files.h"
#include "support/privileges.h"

namespace lumisk::test {

/// The tasks of a queue that a test runs by hand, one by one and in the order that it wants.
template <typename Queue>
class ManualQueue : public Queue {
 public:
  void async(Task task) override { tasks_.push_back(std::move(task)); }

  std::size_t size() const { return tasks_.size(); }
  /// The tasks so far, in the order in which they came; the queue forgets them.
  std::vector<Task> take() { return std::exchange(tasks_, {}); }
  void runAll() {
    for (const Task& task : take()) task();
  }

 private:
  std::vector<Task> tasks_;
};

class ManualMainQueue final : public ManualQueue<MainQueue> {
 public:
  bool isMainThread() const override { return true; }
  void sync(const Task& task) override { task(); }
};

using ManualBackgroundQueue = ManualQueue<BackgroundQueue>;

/// A platform in the C locale and UTC, with queues that tests run by hand.
class ManualPlatform {
 public:
  ManualPlatform() {
    setenv("TZ", "UTC", 1);
    tzset();
  }

  ManualMainQueue mainQueue;
  ManualBackgroundQueue backgroundQueue;

 private:
  FixedAppearance appearance_{AppearanceMatch::Light};
  GettextStringTable strings_{"C", "/nowhere"};
  HeadlessCollation collation_{"C"};
  HeadlessIcons icons_;
  HeadlessHiddenNames hiddenNames_;
  XdgCachesDirectory caches_;
  ProcessStandardOutput standardOutput_;

 public:
  Platform platform{mainQueue,
                    backgroundQueue,
                    appearance_,
                    strings_,
                    [] { return std::make_shared<const HeadlessDateFormatter>("C"); },
                    collation_,
                    icons_,
                    hiddenNames_,
                    caches_,
                    standardOutput_};
};

inline void setDate(const std::filesystem::path& path, std::time_t seconds) {
  const timespec date{.tv_sec = seconds, .tv_nsec = 0};
  const timespec dates[] = {date, date};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), dates, AT_SYMLINK_NOFOLLOW), 0) << path;
}

/// What one item that is no folder occupies on disk.
inline std::int64_t allocatedSizeOf(const std::filesystem::path& path) {
  struct stat status {};
  EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
  return std::int64_t{status.st_blocks} * 512;
}

/// Permissions of a folder whose names anybody may read, but whose entries nobody may look at.
inline constexpr auto kNamesOnly = std::filesystem::perms::owner_read |
                                   std::filesystem::perms::group_read |
                                   std::filesystem::perms::others_read;

}  // namespace lumisk::test
