#include "folder/tree_walker.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iterator>
#include <limits>
#include <string>

#include "deep_tree.h"
#include "folder_fixtures.h"

namespace lumisk {
namespace {

using test::allocatedSizeOf;
using test::TemporaryFolder;
using test::writeAll;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

TEST(FolderCheckedSum, AddsUpToTheLargestNumber) {
  EXPECT_EQ(checkedSum(0, 0), 0);
  EXPECT_EQ(checkedSum(kLargest - 512, 512), kLargest);
  EXPECT_EQ(checkedSum(5'000'000'000, 5'000'000'000), 10'000'000'000);
}

TEST(FolderCheckedSumDeathTest, EndsTheProgramBeyondIt) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_DEATH(checkedSum(kLargest, 1), "size is beyond the largest 64-bit number");
  EXPECT_DEATH(checkedSum(kLargest - 511, 512), "size is beyond the largest 64-bit number");
}

std::size_t openDescriptors() {
  const std::filesystem::directory_iterator list("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(list), end(list)));
}

TEST(FolderTreeWalker, FewDescriptorsAreOpenAtAnyDepth) {
  const TemporaryFolder folder;
  const test::DeepTree tree(folder.path(), 300);
  const std::size_t before = openDescriptors();
  TreeWalker walker;
  walker.startWith(openFolder(folder.path().c_str()));
  std::size_t most = 0;
  while (walker.step()) most = std::max(most, openDescriptors() - before);
  EXPECT_EQ(walker.total(), tree.allocatedSize());
  EXPECT_LE(most, 18U);
  EXPECT_EQ(openDescriptors(), before) << "all are closed in the end";
}

TEST(FolderTreeWalker, SplitPartsTogetherAreTheWhole) {
  const TemporaryFolder folder;
  const test::DeepTree tree(folder.path(), 100);
  // After every number of steps, give away a part, and of that another.
  for (int steps = 0; steps < 200; steps += 7) {
    TreeWalker first;
    first.startWith(openFolder(folder.path().c_str()));
    for (int i = 0; i < steps; ++i) first.step();
    TreeWalker second;
    TreeWalker third;
    if (auto share = first.split()) second.start(std::move(*share));
    for (int i = 0; i < 5; ++i) second.step();
    if (auto share = second.split()) third.start(std::move(*share));
    for (TreeWalker* walker : {&third, &first, &second}) {
      while (walker->step()) {
      }
    }
    EXPECT_EQ(first.total() + second.total() + third.total(), tree.allocatedSize()) << steps;
  }
}

/// Walks a tree of 60 levels, and after some number of steps, for each such number, something
/// happens to the folder on level 20.
class FolderTreeWalkerWithChanges : public testing::Test {
 protected:
  static constexpr int kLevels = 60;
  static constexpr int kLevelsAbove = 20;

  void SetUp() override { std::filesystem::create_directory(root_); }

  void walkWithChangeAfter(int steps, std::int64_t whole, const std::function<void()>& change) {
    TreeWalker walker;
    walker.startWith(openFolder(root_.c_str()));
    for (int i = 0; i < steps; ++i) walker.step();
    change();
    while (walker.step()) {
    }
    EXPECT_GE(walker.total(), whole / kLevels * kLevelsAbove) << "what is above, " << steps;
    EXPECT_LE(walker.total(), whole) << steps;
  }

  void moveAway() const { std::filesystem::rename(changing(), elsewhere_); }
  void moveBack() const {
    std::filesystem::remove(changing());
    std::filesystem::rename(elsewhere_, changing());
  }

  std::filesystem::path changing() const {
    auto path = root_;
    for (int i = 0; i < kLevelsAbove; ++i) path /= "a";
    return path;
  }

  TemporaryFolder folder_;
  std::filesystem::path root_ = folder_ / "root";
  std::filesystem::path elsewhere_ = folder_ / "elsewhere";
};

TEST_F(FolderTreeWalkerWithChanges, AFolderThatMovesAwayTakesOnlyItselfAlong) {
  const test::DeepTree tree(root_, kLevels);
  for (int steps = 0; steps < 2 * kLevels; ++steps) {
    walkWithChangeAfter(steps, tree.allocatedSize(), [this] { moveAway(); });
    moveBack();
  }
}

TEST_F(FolderTreeWalkerWithChanges, AFolderThatBecomesALinkIsNotFollowed) {
  const test::DeepTree tree(root_, kLevels);
  for (int steps = 0; steps < 2 * kLevels; ++steps) {
    walkWithChangeAfter(steps, tree.allocatedSize(), [this] {
      moveAway();
      std::filesystem::create_directory_symlink(root_, changing());
    });
    moveBack();
  }
}

TEST_F(FolderTreeWalkerWithChanges, AFolderThatIsRemovedTakesOnlyItselfAlong) {
  for (int steps = 0; steps < 2 * kLevels; steps += 17) {
    const test::DeepTree tree(root_, kLevels);
    walkWithChangeAfter(steps, tree.allocatedSize(),
                        [this] { std::filesystem::remove_all(changing()); });
  }
}

TEST(FolderTreeWalker, NothingToWalk) {
  TreeWalker walker;
  EXPECT_FALSE(walker.step());
  EXPECT_FALSE(walker.split());
  walker.startWith(FileDescriptor());
  EXPECT_FALSE(walker.step());
  EXPECT_EQ(walker.total(), 0);
}

}  // namespace
}  // namespace lumisk
