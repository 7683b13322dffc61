#include "platform/headless/hidden_names.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/files.h"

namespace lumisk {
namespace {

using test::TemporaryFolder;
using test::writeAll;

std::function<bool(std::string_view)> hiddenIn(const TemporaryFolder& folder) {
  return HeadlessHiddenNames().inFolder(folder.path().native());
}

TEST(HeadlessHiddenNames, ALeadingFullStopHides) {
  const TemporaryFolder folder;
  const auto isHidden = hiddenIn(folder);
  EXPECT_TRUE(isHidden(".DS_Store"));
  EXPECT_TRUE(isHidden("."));
  EXPECT_FALSE(isHidden("a.b"));
  EXPECT_FALSE(isHidden("backup~"));
  EXPECT_FALSE(isHidden(""));
}

TEST(HeadlessHiddenNames, TheFoldersListHides) {
  const TemporaryFolder folder;
  writeAll(folder / ".hidden", "lost+found\n\nwith blank \n\xFF\xFE\nlast");
  const auto isHidden = hiddenIn(folder);
  for (const char* name : {"lost+found", "with blank ", "\xFF\xFE", "last"}) {
    EXPECT_TRUE(isHidden(name)) << name;
  }
  for (const char* name : {"lost", "with blank", "Last", "las", "lost+found\n", ""}) {
    EXPECT_FALSE(isHidden(name)) << name;
  }
}

TEST(HeadlessHiddenNames, OneFoldersListSaysNothingOfAnother) {
  const TemporaryFolder listed;
  const TemporaryFolder plain;
  writeAll(listed / ".hidden", "a\n");
  EXPECT_TRUE(hiddenIn(listed)("a"));
  EXPECT_FALSE(hiddenIn(plain)("a"));
}

TEST(HeadlessHiddenNames, TheAnswerOutlivesItsMakerAndTheFile) {
  std::function<bool(std::string_view)> isHidden;
  {
    const TemporaryFolder folder;
    writeAll(folder / ".hidden", "a\n");
    isHidden = hiddenIn(folder);
  }
  EXPECT_TRUE(isHidden("a"));
}

TEST(HeadlessHiddenNames, AListThatIsNoFileIsNone) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / ".hidden");
  EXPECT_FALSE(hiddenIn(folder)("a"));

  const TemporaryFolder withPipe;
  ASSERT_EQ(mkfifo((withPipe / ".hidden").c_str(), 0600), 0);
  EXPECT_FALSE(hiddenIn(withPipe)("a"));  // and does not wait for a writer

  const TemporaryFolder withLoop;
  std::filesystem::create_symlink(".hidden", withLoop / ".hidden");
  EXPECT_FALSE(hiddenIn(withLoop)("a"));
}

TEST(HeadlessHiddenNames, OnlyTheBeginningOfAHugeListIsRead) {
  const TemporaryFolder folder;
  writeAll(folder / ".hidden", "first\n" + std::string(2 << 20, 'x') + "\nlast\n");
  const auto isHidden = hiddenIn(folder);
  EXPECT_TRUE(isHidden("first"));
  EXPECT_FALSE(isHidden("last"));
}

}  // namespace
}  // namespace lumisk
