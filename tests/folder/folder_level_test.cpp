#include "folder/folder_level.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "folder/directory_reader.h"
#include "support/files.h"

namespace lumisk {
namespace {

using Names = std::vector<std::string>;

FolderLevel levelOf(const test::TemporaryFolder& folder, const Names& names) {
  FolderLevel level(openFolder(folder.path().c_str()));
  for (const std::string& name : names) level.addSubfolder(name);
  return level;
}

Names takeAll(FolderLevel& level) {
  Names names;
  while (level.hasSubfolders()) names.emplace_back(level.takeSubfolder());
  return names;
}

TEST(FolderLevel, HandsOutItsSubfoldersInOrder) {
  const test::TemporaryFolder folder;
  FolderLevel level = levelOf(folder, {"a", "long name", "c"});
  EXPECT_STREQ(level.takeSubfolder(), "a");
  EXPECT_STREQ(level.takenSubfolder(), "a");
  EXPECT_EQ(takeAll(level), Names({"long name", "c"}));
  EXPECT_STREQ(level.takenSubfolder(), "c");
  EXPECT_FALSE(level.hasSubfolders());
}

TEST(FolderLevel, DroppedSubfoldersAreGone) {
  const test::TemporaryFolder folder;
  FolderLevel level = levelOf(folder, {"a", "b"});
  level.takeSubfolder();
  level.dropSubfolders();
  EXPECT_FALSE(level.hasSubfolders());
  EXPECT_STREQ(level.takenSubfolder(), "a");
}

// For every number of subfolders, every number of them taken, and names of several lengths.
TEST(FolderLevel, SplittingLosesAndDoublesNothing) {
  const test::TemporaryFolder folder;
  for (std::size_t size = 0; size <= 9; ++size) {
    for (std::size_t taken = 0; taken <= size; ++taken) {
      for (std::size_t longest = 1; longest <= 40; longest += 13) {
        Names names;
        for (std::size_t i = 0; i < size; ++i) {
          names.push_back(std::string(1 + i * longest % 41, static_cast<char>('a' + i)));
        }
        FolderLevel level = levelOf(folder, names);
        for (std::size_t i = 0; i < taken; ++i) level.takeSubfolder();
        const std::size_t left = size - taken;

        auto share = level.split(FolderLevel::Share::Half);
        ASSERT_EQ(share.has_value(), left >= 2) << left;
        Names kept = takeAll(level);
        if (share) {
          EXPECT_FALSE(kept.empty());
          EXPECT_TRUE(share->hasSubfolders());
          EXPECT_TRUE(share->folder().isOpen());
          EXPECT_NE(share->folder().get(), level.folder().get());
          std::ranges::copy(takeAll(*share), std::back_inserter(kept));
        }
        EXPECT_EQ(kept, Names(names.end() - static_cast<std::ptrdiff_t>(left), names.end()));
      }
    }
  }
}

TEST(FolderLevel, SplittingHalvesManyNamesOfOneLength) {
  const test::TemporaryFolder folder;
  FolderLevel level = levelOf(folder, Names(100, "name"));
  auto share = level.split(FolderLevel::Share::Half);
  ASSERT_TRUE(share);
  EXPECT_NEAR(static_cast<double>(takeAll(*share).size()), 50, 1);
}

TEST(FolderLevel, TheLastSubfolderIsGivenAwayOnlyWhenAsked) {
  const test::TemporaryFolder folder;
  FolderLevel level = levelOf(folder, {"only"});
  EXPECT_FALSE(level.split(FolderLevel::Share::Half));
  auto share = level.split(FolderLevel::Share::HalfOrLast);
  ASSERT_TRUE(share);
  EXPECT_EQ(takeAll(*share), Names({"only"}));
  EXPECT_FALSE(level.hasSubfolders());
  EXPECT_FALSE(level.split(FolderLevel::Share::HalfOrLast));
}

TEST(FolderLevel, RestsAndGoesOnWithTheSameFolderOnly) {
  const test::TemporaryFolder folder;
  const test::TemporaryFolder other;
  FolderLevel level = levelOf(folder, {"a", "b"});
  level.rest();
  EXPECT_FALSE(level.folder().isOpen());
  EXPECT_FALSE(level.split(FolderLevel::Share::Half)) << "a resting level has nothing to give from";
  EXPECT_FALSE(level.resume(openFolder(other.path().c_str())));
  EXPECT_FALSE(level.resume(FileDescriptor()));
  EXPECT_FALSE(level.folder().isOpen());
  EXPECT_TRUE(level.resume(openFolder(folder.path().c_str())));
  EXPECT_TRUE(level.folder().isOpen());
  EXPECT_EQ(takeAll(level), Names({"a", "b"}));
}

}  // namespace
}  // namespace lumisk
