// The program called with words, as the command lumisk and persons do.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <string>
#include <vector>

#include "desktop/gref.h"
#include "support/files.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

TEST(PreviewerCommand, HelpIsWritten) {
  const ProcessResult result = runProcess({LUMISK_PREVIEWER, "--help"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.standardOutput, HasSubstr("Usage: lumisk-previewer"));
}

TEST(PreviewerCommand, AnUnknownOptionIsNoFile) {
  const ProcessResult result = runProcess({LUMISK_PREVIEWER, "--hepl"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.standardError, HasSubstr("unknown option --hepl"));
}

TEST(PreviewerCommand, APictureOfAnotherMachinesFileIsAWrongCommandLine) {
  const ProcessResult result =
      runProcess({LUMISK_PREVIEWER, "snapshot", "file://elsewhere/a.md", "/nowhere/a.png"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.standardError, HasSubstr("not the URI of a file on this machine"));
}

TEST(PreviewerCommand, AWindowForAnotherMachinesFileIsAWrongCommandLine) {
  const ProcessResult result = runProcess({LUMISK_PREVIEWER, "open", "file://elsewhere/a.md"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.standardError, HasSubstr("not the URI of a file on this machine"));
}

// With a display it would wait for ever for calls that cannot come.
TEST(PreviewerCommand, AServiceWithoutABusEnds) {
  const ProcessResult result =
      runProcess({"/usr/bin/env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere", "timeout", "20",
                  LUMISK_PREVIEWER, "--gapplication-service"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("no session bus"));
}

TEST(PreviewerCommand, WritesAPictureOfTheSizeAskedFor) {
  const TemporaryFolder folder;
  writeAll(folder / "a.md", "# A\n");
  const std::string picture = (folder / "a.png").string();
  const ProcessResult result =
      runProcess({LUMISK_PREVIEWER, "snapshot", "--dark", "--size", "320x240", "--mode", "source",
                  (folder / "a.md").string(), picture});
  ASSERT_EQ(result.exitStatus, 0) << result.standardError;
  const auto texture =
      desktop::GRef<GdkTexture>::adopt(gdk_texture_new_from_filename(picture.c_str(), nullptr));
  ASSERT_TRUE(texture);
  EXPECT_EQ(gdk_texture_get_width(texture.get()), 320);
  EXPECT_EQ(gdk_texture_get_height(texture.get()), 240);
}

TEST(PreviewerCommand, SaysWhyThereIsNoPicture) {
  const TemporaryFolder folder;
  const ProcessResult missing = runProcess(
      {LUMISK_PREVIEWER, "snapshot", (folder / "no.md").string(), (folder / "a.png").string()});
  EXPECT_EQ(missing.exitStatus, 1);
  EXPECT_THAT(missing.standardError, HasSubstr("no.md: This item is no longer there."));
}

TEST(PreviewerCommand, AModeThatThePreviewLacksIsAWrongCommandLine) {
  const TemporaryFolder folder;
  writeAll(folder / "a.csv", "a,b\n");
  for (const std::string mode : {"no", "formatted", "source"}) {
    const ProcessResult result =
        runProcess({LUMISK_PREVIEWER, "snapshot", "--mode", mode, (folder / "a.csv").string(),
                    (folder / "a.png").string()});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.standardError, HasSubstr("no mode called " + mode));
  }
}

TEST(PreviewerCommand, AWrongCommandLineIsWrongWithoutADisplay) {
  for (const std::vector<std::string>& words : {std::vector<std::string>{"snapshot", "a.md"},
                                                {"snapshot", "--mode", "no", "a.md", "a.png"},
                                                {"snapshot", "file://elsewhere/a", "a.png"},
                                                {"open"},
                                                {"open", "file://elsewhere/a"}}) {
    std::vector<std::string> all = {"/usr/bin/env", "-u", "DISPLAY", LUMISK_PREVIEWER};
    all.insert(all.end(), words.begin(), words.end());
    EXPECT_EQ(runProcess(all).exitStatus, 2) << words.front() << " " << words.size();
  }
}

TEST(PreviewerCommand, WithoutADisplayItSaysWhatToDoInstead) {
  const struct {
    const char* label;
    std::vector<std::string> withoutDisplay;
  } rows[] = {{"unset", {"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY"}},
              {"empty", {"DISPLAY=", "WAYLAND_DISPLAY="}}};
  const auto complaint = [](std::vector<std::string> words, const std::vector<std::string>& rest) {
    words.insert(words.begin(), "/usr/bin/env");
    words.insert(words.end(), rest.begin(), rest.end());
    const ProcessResult result = runProcess(words);
    EXPECT_EQ(result.exitStatus, 1);
    return result.standardError;
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    EXPECT_THAT(complaint(row.withoutDisplay, {LUMISK_PREVIEWER, "a.md"}),
                HasSubstr("lumisk page"));
    EXPECT_THAT(complaint(row.withoutDisplay, {LUMISK_PREVIEWER, "snapshot", "a.md", "a.png"}),
                HasSubstr("xvfb-run"));
  }
}

}  // namespace
}  // namespace lumisk::test
