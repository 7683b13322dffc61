#include "desktop/picture_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/files.h"

namespace lumisk::desktop {
namespace {

using test::TemporaryFolder;
using test::writeAll;
using testing::HasSubstr;

class PictureFile : public testing::Test {
 protected:
  PictureFile() { writeAll(folder_ / "a.md", "# A"); }
  std::string why(const char* output) {
    return whyNotWritable((folder_ / "a.md").string(), (folder_ / output).string()).value_or("");
  }
  TemporaryFolder folder_;
};

TEST_F(PictureFile, ReplacesNothingOrAPicture) {
  EXPECT_EQ(why("new.png"), "");
  EXPECT_EQ(why("no folder/new.png"), "") << "said when it is written";
  writeAll(folder_ / "empty", "");
  EXPECT_EQ(why("empty"), "");
  writeAll(folder_ / "old.png", "\x89PNG\r\n\x1a\n and more");
  EXPECT_EQ(why("old.png"), "");
}

TEST_F(PictureFile, LeavesOtherFilesAlone) {
  writeAll(folder_ / "b.md", "# B");
  EXPECT_THAT(why("b.md"), HasSubstr("no PNG picture"));
  writeAll(folder_ / "short", "\x89PNG");
  EXPECT_THAT(why("short"), HasSubstr("no PNG picture"));
  std::filesystem::create_directory(folder_ / "folder");
  EXPECT_THAT(why("folder"), HasSubstr("is a folder"));
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  EXPECT_THAT(why("pipe"), HasSubstr("is no file"));
  EXPECT_THAT(whyNotWritable((folder_ / "a.md").string(), "/dev/null").value_or(""),
              HasSubstr("is no file"));
}

TEST_F(PictureFile, IsNeverTheItemItselfByAnyName) {
  EXPECT_THAT(why("a.md"), HasSubstr("the item itself"));
  std::filesystem::create_symlink(folder_ / "a.md", folder_ / "symbolic");
  EXPECT_THAT(why("symbolic"), HasSubstr("the item itself"));
  std::filesystem::create_hard_link(folder_ / "a.md", folder_ / "hard");
  EXPECT_THAT(why("hard"), HasSubstr("the item itself"));
  writeAll(folder_ / "a.md", "\x89PNG\r\n\x1a\n");
  EXPECT_THAT(why("a.md"), HasSubstr("the item itself"));
}

}  // namespace
}  // namespace lumisk::desktop
