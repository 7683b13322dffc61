// The previewer on a Wayland compositor, which is asked what it shows.

#include <gtest/gtest.h>

#include <string>

#include "previewer_calls.h"
#include "support/files.h"
#include "support/process.h"
#include "x_desktop.h"

namespace lumisk::test {
namespace {

class WaylandTest : public testing::Test {
 protected:
  void SetUp() override {
    writeAll(folder_ / "a.md", "# First\n");
    writeAll(folder_ / "b.json", "{\"second\":2}");
  }
  void TearDown() override {
    call("Close", {});
    EXPECT_TRUE(closes());
  }

  std::string uri(const std::string& name) const { return "file://" + (folder_ / name).string(); }

  /// What the compositor has on its screen, window by window.
  static std::string scene() {
    return runProcess({"/usr/bin/env", "weston-debug", "scene-graph"}).standardOutput;
  }
  bool shows(const std::string& name) const {
    const std::string window = "top-level window '" + name + "' of org.lumisk.Previewer";
    const bool isShown = eventually([&] { return scene().find(window) != std::string::npos; });
    EXPECT_TRUE(isShown) << name << ", visible by its own word: " << isVisible() << "\n" << scene();
    return isShown;
  }
  bool closes() const {
    return eventually([&] {
      const std::string shown = scene();
      return shown.find("Output 0") != std::string::npos &&
             shown.find("of org.lumisk.Previewer") == std::string::npos;
    });
  }
  static std::string parentHandle() {
    return call("Get", {kPreviewerInterface, "ParentHandle"}, kPreviewerName, kPreviewerPath,
                "org.freedesktop.DBus.Properties")
        .standardOutput;
  }
  /// Into the middle of the screen, where every window of the previewer's size is.
  void clickThePreview() {
    const auto compositor = [&] { return desktop_.windowOf("weston-1"); };
    ASSERT_TRUE(eventually([&] { return compositor() != 0; })) << "its screen";
    const ScreenPlace screen = desktop_.placeOf(compositor());
    clickAt(screen.x + screen.width / 2, screen.y + screen.height / 2);
    ASSERT_TRUE(eventually([&] { return desktop_.hasKeyboard(compositor()); }));
  }

  TemporaryFolder folder_;
  XDesktop desktop_;
};

TEST_F(WaylandTest, OpensWhateverWindowItIsToBelongTo) {
  for (const std::string handle : {"", "wayland:abc", "wayland:", "x11:3a", "nonsense"}) {
    EXPECT_EQ(show(uri("a.md"), handle, false).standardOutput, "()\n") << handle;
    EXPECT_TRUE(shows("a.md")) << handle;
    EXPECT_TRUE(isVisible()) << handle;
    EXPECT_EQ(parentHandle(), "(<'" + handle + "'>,)\n");
    const pid_t service = serviceProcess();
    EXPECT_EQ(call("Close", {}).standardOutput, "()\n");
    EXPECT_TRUE(closes()) << handle;
    EXPECT_FALSE(isVisible()) << handle;
    EXPECT_EQ(serviceProcess(), service) << handle;
  }
}

TEST_F(WaylandTest, TheWindowIsUsedAgainForAnotherItemAndParent) {
  show(uri("a.md"), "", false);
  ASSERT_TRUE(shows("a.md"));
  const pid_t service = serviceProcess();
  show(uri("b.json"), "wayland:abc", false);
  EXPECT_TRUE(shows("b.json"));
  show(uri("a.md"), "", false);
  EXPECT_TRUE(shows("a.md"));
  EXPECT_EQ(serviceProcess(), service);
}

TEST_F(WaylandTest, SpaceCloses) {
  show(uri("a.md"), "", true);
  ASSERT_TRUE(shows("a.md"));
  ASSERT_NO_FATAL_FAILURE(clickThePreview());
  pressKeys("space");
  EXPECT_TRUE(closes());
  EXPECT_FALSE(isVisible());
}

}  // namespace
}  // namespace lumisk::test
