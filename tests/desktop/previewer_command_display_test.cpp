// The program called with words, as the command lumisk and persons do.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(PreviewerCommand, AnEmptyDisplayIsNone) {
  const ProcessResult result =
      runProcess({"/usr/bin/env", "DISPLAY=", "WAYLAND_DISPLAY=", LUMISK_PREVIEWER, "/"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("lumisk page"));
}

TEST(PreviewerCommand, APictureOfAnotherMachinesFileIsAWrongCommandLine) {
  const ProcessResult result =
      runProcess({LUMISK_PREVIEWER, "snapshot", "file://elsewhere/a.md", "/nowhere/a.png"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.standardError, HasSubstr("not the URI of a file on this machine"));
}

}  // namespace
}  // namespace lumisk::test
