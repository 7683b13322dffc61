// What one document showed is not seen under the next one's name, however the web process is
// pressed.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "desktop/picture.h"
#include "panel_on_screen.h"

namespace lumisk::test {
namespace {

constexpr std::uint32_t kRed = 0xFFFF0000;  // of the default format, a number of 32 bits a pixel

/// How many pixels of what the widget shows are pure red.
std::size_t redPixels(GtkWidget* widget) {
  const auto picture = desktop::pictureOf(widget);
  if (!picture) return 0;
  const auto width = static_cast<std::size_t>(gdk_texture_get_width(picture.get()));
  const auto height = static_cast<std::size_t>(gdk_texture_get_height(picture.get()));
  std::vector<std::uint32_t> pixels(width * height);
  gdk_texture_download(picture.get(), reinterpret_cast<guchar*>(pixels.data()), width * 4);
  return static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), kRed));
}

TEST(Leftovers, ADocumentIsNotSeenUnderTheNameOfTheNext) {
  const TemporaryFolder folder;
  writeAll(folder / "red.md", "<div style=\"background: #f00; height: 3000px\"></div>\n");
  std::string text = "# Plain\n\n";
  for (int i = 0; i < 300; ++i) text += "A paragraph with `code` and *words*.\n\n";
  writeAll(folder / "plain.md", text);

  PanelOnScreen panel;
  for (const bool isClosedBetween : {false, true, false, true}) {
    SCOPED_TRACE(isClosedBetween ? "closed between" : "one after the other");
    ASSERT_TRUE(panel.open(folder / "red.md"));
    std::size_t mostRed = 0;
    const auto look = [&] {  // leaves the main loop time to take in what comes, and to draw it
      runFor(30);
      mostRed = std::max(mostRed, redPixels(panel.root()));
    };
    for (int i = 0; i < 300 && mostRed == 0; ++i) look();
    ASSERT_GT(mostRed, 10'000U);

    if (isClosedBetween) panel->close();
    mostRed = 0;
    bool isFinished = false;
    const auto former = std::exchange(panel->onPageFinished, [&] { isFinished = true; });
    panel->show(FileURL::fromPath((folder / "plain.md").string()));
    for (int i = 0; i < 300 && !isFinished; ++i) look();
    EXPECT_TRUE(isFinished);
    for (int i = 0; i < 15; ++i) look();
    EXPECT_EQ(mostRed, 0U);
    panel->onPageFinished = former;
  }
}

}  // namespace
}  // namespace lumisk::test
