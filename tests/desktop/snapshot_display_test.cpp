// Pictures of previews, as the command writes them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <set>

#include "desktop/curtain.h"
#include "desktop/page_drawing.h"
#include "desktop/picture.h"
#include "panel_on_screen.h"
#include "picture_reading.h"
#include "process_tree.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

using desktop::GRef;
using testing::HasSubstr;

TEST(Picture, IsBlankWhenAllIsOneColour) {
  const auto pictureWith = [](guint32 last) {
    const guint32 pixels[] = {7, 7, 7, 7, 7, last};
    GBytes* const bytes = g_bytes_new(pixels, sizeof pixels);
    auto picture = GRef<GdkTexture>::adopt(
        gdk_memory_texture_new(3, 2, GDK_MEMORY_DEFAULT, bytes, 3 * sizeof *pixels));
    g_bytes_unref(bytes);
    return picture;
  };
  EXPECT_TRUE(desktop::isBlank(pictureWith(7).get()));
  EXPECT_FALSE(desktop::isBlank(pictureWith(8).get()));
}

TEST(PageDrawing, IsOverWhenThePageIsOnScreen) {
  Program program({LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, LUMISK_CATALOGUES});
  PageOnScreen page("<!DOCTYPE html><body style=\"background:#fff\"><h1>Here</h1></body>", program);
  bool isDrawn = false;
  desktop::PageDrawing drawing;
  drawing.wait(page.view(), [&] { isDrawn = true; });
  ASSERT_TRUE(runUntil([&] { return isDrawn; }));
  const auto shown = desktop::pictureOf(GTK_WIDGET(page.view()));
  ASSERT_TRUE(shown);
  EXPECT_FALSE(desktop::isBlank(shown.get()));
}

TEST(PageDrawing, IsNotOverBehindAClosedCurtain) {
  PageOnScreen page("<!DOCTYPE html><h1>Here</h1>");
  ASSERT_TRUE(runUntil([&] { return !desktop::isCurtainClosed(page.view()); }));
  runFor(100);  // until it has been drawn
  desktop::setCurtainClosed(page.view(), true);
  bool isDrawn = false;
  desktop::PageDrawing drawing;
  drawing.wait(page.view(), [&] { isDrawn = true; });
  runFor(1000);
  EXPECT_FALSE(isDrawn);
  desktop::setCurtainClosed(page.view(), false);
  EXPECT_TRUE(runUntil([&] { return isDrawn; }));
}

TEST(PageDrawing, DoesNotWaitForAPageWithNothingOnIt) {
  PageOnScreen page("<!DOCTYPE html><body></body>");
  bool isDrawn = false;
  desktop::PageDrawing drawing;
  drawing.wait(page.view(), [&] { isDrawn = true; });
  EXPECT_TRUE(runUntil([&] { return isDrawn; }));
}

TEST(Snapshot, ShowsThePageFromTheFirstPreviewOn) {
  const ItemsToShow items;
  std::string text = "# Guide\n\n";
  for (int i = 0; i < 60; ++i) text += "A paragraph of this guide.\n\n";
  writeAll(items / "guide.md", text);
  const std::string picture = (items / "picture").string();
  for (const char* const mode : {"rendered", "source"}) {
    const ProcessResult result =
        runProcess({LUMISK_PREVIEWER, "snapshot", "--size", "500x400", "--mode", mode,
                    (items / "guide.md").string(), picture});
    ASSERT_EQ(result.exitStatus, 0) << result.standardError;
    const auto shown =
        GRef<GdkTexture>::adopt(gdk_texture_new_from_filename(picture.c_str(), nullptr));
    ASSERT_TRUE(shown);
    EXPECT_FALSE(desktop::isBlank(lowerHalf(shown.get()).get())) << mode;
  }
}

TEST(Snapshot, OptionsAreSeenInThePicture) {
  const ItemsToShow items;
  const std::string picture = (items / "picture").string();
  const auto take = [&](const std::vector<std::string>& options) {
    std::vector<std::string> words = {LUMISK_PREVIEWER, "snapshot", "--size", "500x400"};
    words.insert(words.end(), options.begin(), options.end());
    words.insert(words.end(), {(items / "guide.md").string(), picture});
    const ProcessResult result = runProcess(words);
    EXPECT_EQ(result.exitStatus, 0) << result.standardError;
    return GRef<GdkTexture>::adopt(gdk_texture_new_from_filename(picture.c_str(), nullptr));
  };
  const auto light = take({"--light"});
  const auto dark = take({"--dark"});
  const auto source = take({"--mode", "source"});
  ASSERT_TRUE(light && dark && source);
  EXPECT_GT(meanLightness(light.get()), 200);
  EXPECT_LT(meanLightness(dark.get()), 80);
  EXPECT_GT(meanLightness(source.get()), 200);
  const auto pixels = [](GdkTexture* texture) {
    std::vector<guchar> bytes(std::size_t{500} * 400 * 4);
    gdk_texture_download(texture, bytes.data(), std::size_t{500} * 4);
    return bytes;
  };
  const auto rendered = pixels(light.get());
  const auto plain = pixels(source.get());
  std::size_t different = 0;
  for (std::size_t i = 0; i < rendered.size(); i += 4)
    different += std::equal(&rendered[i], &rendered[i] + 3, &plain[i]) ? 0 : 1;
  EXPECT_GT(different, 1000U) << "of 200000 pixels";
}

TEST(Snapshot, OverwritesNoDocument) {
  const ItemsToShow items;
  const std::string one = (items / "guide.md").string();
  const std::string two = (items / "data.json").string();
  const std::string before = readAll(two);
  const ProcessResult second = runProcess({LUMISK_PREVIEWER, "snapshot", one, two});
  EXPECT_EQ(second.exitStatus, 1);
  EXPECT_THAT(second.standardError, HasSubstr("data.json' is there and is no PNG picture"));
  EXPECT_EQ(readAll(two), before);
  const ProcessResult itself = runProcess({LUMISK_PREVIEWER, "snapshot", two, two});
  EXPECT_EQ(itself.exitStatus, 1);
  EXPECT_THAT(itself.standardError, HasSubstr("the item itself"));
  EXPECT_EQ(readAll(two), before);
}

TEST(Snapshot, NamesAreHarmlessToATerminal) {
  const TemporaryFolder folder;
  const ProcessResult result = runProcess(
      {LUMISK_PREVIEWER, "snapshot", (folder / "a\x1b[2Jb.md").string(), "/nowhere/x.png"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.standardError, HasSubstr("a\ufffd[2Jb.md")) << "as in a title";
  EXPECT_THAT(result.standardError, Not(HasSubstr("\x1b")));
  const ProcessResult usage = runProcess({LUMISK_PREVIEWER, "snapshot", "--\x1b[2J"});
  EXPECT_EQ(usage.exitStatus, 2);
  EXPECT_THAT(usage.standardError, HasSubstr("unknown option --?[2J"));
}

TEST(Snapshot, SaysAtOnceThatTheWebProcessHasEnded) {
  const ItemsToShow items;
  writeAll(items / "guide.md", "# Hangs\n\n</script><script>while (true);</script>");
  GError* error = nullptr;
  const std::string document = (items / "guide.md").string();
  const std::string picture = (items / "new.png").string();
  const auto process = GRef<GSubprocess>::adopt(
      g_subprocess_new(G_SUBPROCESS_FLAGS_STDERR_PIPE, &error, LUMISK_PREVIEWER, "snapshot",
                       document.c_str(), picture.c_str(), nullptr));
  ASSERT_TRUE(process);
  const std::string id = g_subprocess_get_identifier(process.get());
  // One that is killed before it has begun takes the program with it: the engine sees to that.
  constexpr long kInItsLoop = 50;
  ASSERT_TRUE(runUntil([&] {
    const std::set<std::string> pages = webProcesses(id);
    return std::any_of(pages.begin(), pages.end(),
                       [](const std::string& page) { return computedTicks(page) > kInItsLoop; });
  }));
  for (const std::string& page : webProcesses(id)) kill(std::stoi(page), SIGKILL);
  // The program itself waits for a minute before it gives up.
  EXPECT_TRUE(runUntil([&] { return g_subprocess_get_identifier(process.get()) == nullptr; }));
  char* complaint = nullptr;
  g_subprocess_communicate_utf8(process.get(), nullptr, nullptr, nullptr, &complaint, nullptr);
  EXPECT_THAT(complaint, HasSubstr("the process that draws the page has ended"));
  g_free(complaint);
}

}  // namespace
}  // namespace lumisk::test
