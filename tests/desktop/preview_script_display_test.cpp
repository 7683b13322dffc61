// What `make preview` does where there is no screen.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "desktop/picture.h"
#include "picture_reading.h"
#include "support/files.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

namespace fs = std::filesystem;
using desktop::GRef;
using testing::HasSubstr;

class PreviewScript : public testing::Test {
 protected:
  /// The programs as they were built, in a folder that takes the picture.
  PreviewScript() {
    const fs::path programs = fs::path(LUMISK_PREVIEWER).parent_path().parent_path();
    for (const char* const folder : {"bin", "libexec"})
      fs::create_directory_symlink(programs / folder, build_ / folder);
  }
  ProcessResult previewOf(const std::string& file) const {
    return runProcess({"/usr/bin/env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u",
                       "DBUS_SESSION_BUS_ADDRESS", LUMISK_SOURCE "/scripts/preview",
                       build_.path().string(), file});
  }
  std::string picture() const { return (build_ / "preview.png").string(); }

  TemporaryFolder build_;
};

TEST_F(PreviewScript, WritesThePictureOfTheDocument) {
  writeAll(build_ / "notes.md", "# Notes\n\nSome *text* and $x^2$.\n\n- [x] done\n");
  const ProcessResult result = previewOf((build_ / "notes.md").string());
  EXPECT_EQ(result.exitStatus, 0) << result.standardError;
  EXPECT_THAT(result.standardOutput, HasSubstr(picture()));
  const auto shown =
      GRef<GdkTexture>::adopt(gdk_texture_new_from_filename(picture().c_str(), nullptr));
  ASSERT_TRUE(shown);
  EXPECT_GT(gdk_texture_get_width(shown.get()), 300);
  EXPECT_GT(meanLightness(shown.get()), 150);
  EXPECT_FALSE(desktop::isBlank(shown.get()));
}

TEST_F(PreviewScript, SaysWhyThereIsNoPicture) {
  const ProcessResult result = previewOf((build_ / "missing.md").string());
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("missing.md"));
  EXPECT_FALSE(fs::exists(picture()));
}

}  // namespace
}  // namespace lumisk::test
