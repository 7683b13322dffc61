// Pictures of previews, as the command writes them.

#include <gtest/gtest.h>

#include "desktop/page_drawing.h"
#include "desktop/picture.h"
#include "panel_on_screen.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

using desktop::GRef;

/// The lower half of a picture, where a page stands and no bar does.
GRef<GdkTexture> lowerHalf(GdkTexture* picture) {
  const int width = gdk_texture_get_width(picture);
  const int height = gdk_texture_get_height(picture) / 2;
  const auto stride = static_cast<std::size_t>(width) * 4;
  std::vector<guchar> pixels(stride * 2 * static_cast<std::size_t>(height + 1));
  gdk_texture_download(picture, pixels.data(), stride);
  GBytes* const bytes = g_bytes_new(pixels.data() + stride * static_cast<std::size_t>(height),
                                    stride * static_cast<std::size_t>(height));
  auto half = GRef<GdkTexture>::adopt(
      gdk_memory_texture_new(width, height, GDK_MEMORY_DEFAULT, bytes, stride));
  g_bytes_unref(bytes);
  return half;
}

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

}  // namespace
}  // namespace lumisk::test
