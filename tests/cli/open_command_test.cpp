#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "scratch_installation.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;
using test::ProcessResult;
using test::ScratchInstallation;
using test::writeAll;
using testing::HasSubstr;

const std::vector<std::string> kDisplay = {"DISPLAY=:0"};

TEST(OpenCommand, HandsAddressesToThePreviewer) {
  const ScratchInstallation installation;
  const std::string folder = installation.root / "home";
  writeAll(folder + "/a b.md", "x");
  writeAll(folder + "/--dark", "x");
  const std::string base =
      "file://" + (installation.root.parent_path() / "a%20folder/home").string();
  struct Row {
    std::vector<std::string> words;
    std::string calls;
  };
  const Row rows[] = {
      {{"a b.md"}, "open\n" + base + "/a%20b.md\n"},
      {{"open", "a b.md"}, "open\n" + base + "/a%20b.md\n"},
      {{"open", "--", "--dark", "a b.md"}, "open\n" + base + "/--dark\n" + base + "/a%20b.md\n"},
      {{base + "/a%20b.md"}, "open\n" + base + "/a%20b.md\n"},
      {{"."}, "open\n" + base + "/\n"},
      {{"trash:///x"}, "open\ntrash:///x\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    fs::remove(installation.root / "calls");
    const ProcessResult result =
        installation.run(row.words, kDisplay, {.workingDirectory = folder});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.standardError, "");
    EXPECT_EQ(installation.calls(), row.calls);
  }
}

TEST(OpenCommand, AnyDisplayWillDo) {
  const ScratchInstallation installation;
  EXPECT_EQ(installation.run({"/"}, {"WAYLAND_DISPLAY=wayland-0"}).exitStatus, 0);
  EXPECT_EQ(installation.calls(), "open\nfile:///\n");
}

TEST(OpenCommand, SnapshotBecomesThePreviewerWithTheSameWords) {
  const ScratchInstallation installation;
  const ProcessResult result =
      installation.run({"snapshot", "--dark", "/nowhere/a b", "x.png"}, kDisplay);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(installation.calls(), "snapshot\n--dark\n/nowhere/a b\nx.png\n");
}

TEST(OpenCommand, WithoutADisplayItNamesTheOtherWay) {
  const ScratchInstallation installation;
  for (const std::vector<std::string>& environment :
       {std::vector<std::string>{}, {"DISPLAY=", "WAYLAND_DISPLAY="}}) {
    const ProcessResult result = installation.run({"open", "/"}, environment);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.standardError, HasSubstr("lumisk page"));
    EXPECT_EQ(installation.calls(), "");
  }
}

// Wrong words are wrong without a display, too; that there is none is for the previewer to say.
TEST(OpenCommand, ASnapshotsWordsAreReadWithoutADisplay) {
  const ScratchInstallation installation;
  EXPECT_EQ(installation.run({"snapshot", "--mode", "bogus"}, {}).exitStatus, 0);
  EXPECT_EQ(installation.calls(), "snapshot\n--mode\nbogus\n");
}

TEST(OpenCommand, WithoutAPreviewerItNamesTheOtherWay) {
  const ScratchInstallation installation;
  fs::remove(installation.previewer());
  const ProcessResult result = installation.run({"/"}, kDisplay);
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("lumisk page"));
}

TEST(OpenCommand, WhatIsNotThereIsNotHandedOver) {
  const ScratchInstallation installation;
  struct Row {
    std::vector<std::string> words;
    const char* complaint;
    int exitStatus = 1;
  };
  const Row rows[] = {
      {{"/nowhere/a.md"}, "cannot show '/nowhere/a.md': No such file or directory"},
      {{"/", "/nowhere"}, "cannot show '/nowhere': No such file or directory"},
      {{"file://elsewhere/a"}, "is not the URI of a file on this machine", 2},
      {{"trash:///\xFF"}, "is not the URI of a file on this machine", 2},
      {{"pgae"}, "cannot show 'pgae': No such file or directory"},
      {{"a:b"}, "cannot show 'a:b': No such file or directory"},
  };
  for (const Row& row : rows) {
    const ProcessResult result = installation.run(row.words, kDisplay);
    EXPECT_EQ(result.exitStatus, row.exitStatus);
    EXPECT_THAT(result.standardError, HasSubstr(row.complaint));
    EXPECT_EQ(installation.calls(), "");
  }
}

}  // namespace
}  // namespace lumisk
