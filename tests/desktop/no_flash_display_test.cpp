// Nothing flashes up in the dark: from the request until the page is drawn the screen shows no
// light area at any moment.

#include <chrono>

#include "desktop/page_drawing.h"
#include "panel_on_screen.h"
#include "panel_test.h"

namespace lumisk::test {
namespace {

/// Whether some square of the screen is light as a whole, as no text on a dark ground makes it.
bool hasLightArea(const XDesktop::Lightness& screen) {
  constexpr int kSide = 24;
  constexpr int kLight = 140;
  if (screen.width == 0) return false;
  const int height = static_cast<int>(screen.pixels.size()) / screen.width;
  for (int top = 0; top + kSide <= height; top += kSide) {
    for (int left = 0; left + kSide <= screen.width; left += kSide) {
      int sum = 0;
      for (int y = top; y < top + kSide; ++y)
        for (int x = left; x < left + kSide; ++x)
          sum += screen.pixels[static_cast<std::size_t>(y * screen.width + x)];
      if (sum > kLight * kSide * kSide) return true;
    }
  }
  return false;
}

class NoFlashTest : public PanelTest {
 protected:
  NoFlashTest() { appear(ADW_COLOR_SCHEME_FORCE_DARK); }
  ~NoFlashTest() override {
    panel_.reset();
    appear(ADW_COLOR_SCHEME_DEFAULT);
  }
  static void appear(AdwColorScheme scheme) {
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), scheme);
  }

  /// Looks at the screen from `request` on until the page is drawn, and some time longer.
  struct Looks {
    int all = 0;
    int light = 0;
    int becameLight = 0;
  };
  Looks looksAfter(const std::function<void()>& request) {
    Looks looks;
    bool wasLight = false;
    const auto look = [&] {
      const bool isLight = hasLightArea(desktop_.lightnessOfTheScreen());
      if (isLight && looks.all > 0 && !wasLight) ++looks.becameLight;
      wasLight = isLight;
      ++looks.all;
      looks.light += isLight ? 1 : 0;
    };
    bool isDrawn = false;
    desktop::PageDrawing drawing;
    finishedLoads_ = 0;
    request();
    // Looks as often as the screen may change, and leaves the rest of the time to those who draw.
    constexpr auto kPause = std::chrono::milliseconds(15);
    auto next = std::chrono::steady_clock::now();
    bool isAwaited = false;
    const auto isOver = [&] {
      if (std::chrono::steady_clock::now() >= next) {
        look();
        next = std::chrono::steady_clock::now() + kPause;
      }
      if (finishedLoads_ > 0 && !isAwaited) {
        isAwaited = true;
        drawing.wait(page(), [&] { isDrawn = true; });
      }
      return isDrawn;
    };
    EXPECT_TRUE(runUntil(isOver));
    constexpr int kLooksAfterwards = 10;
    for (int i = 0; i < kLooksAfterwards; ++i) {
      runFor(30);
      look();
    }
    return looks;
  }
  void expectDark(const char* label, const std::function<void()>& request) {
    const Looks looks = looksAfter(request);
    EXPECT_EQ(looks.light, 0) << label << ", of " << looks.all;
    EXPECT_GT(looks.all, 11) << "also before it was drawn";
  }
  void show(const std::filesystem::path& path) { panel_->show(FileURL::fromPath(path.string())); }

  ItemsToShow items_;
};

TEST_F(NoFlashTest, FromTheVeryFirstPage) {
  ASSERT_FALSE(hasLightArea(desktop_.lightnessOfTheScreen()));
  Program program({LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, LUMISK_CATALOGUES});
  panel_ = std::make_unique<desktop::Panel>(program.platform.platform(), program.liveViews);
  panel_->onPageFinished = [this] { ++finishedLoads_; };
  expectDark("a fresh view", [&] { show(items_ / "guide.md"); });
  panel_.reset();  // before the program
}

TEST_F(NoFlashTest, AfterALightPage) {
  for (const bool isClosed : {true, false}) {
    SCOPED_TRACE(isClosed ? "closed between" : "in the open panel");
    appear(ADW_COLOR_SCHEME_FORCE_LIGHT);
    const Looks looks = looksAfter([&] { show(items_ / "guide.md"); });
    EXPECT_GT(looks.light, 10) << "in the light it is seen that it is light";
    if (isClosed) panel_->close();
    appear(ADW_COLOR_SCHEME_FORCE_DARK);
    if (isClosed) {
      ASSERT_TRUE(runUntil([&] {
        runFor(50);
        return !hasLightArea(desktop_.lightnessOfTheScreen());
      }));
      expectDark("the next", [&] { show(items_ / "table.csv"); });
    } else {
      // The page stays light until it is prepared anew, or another comes in its place.
      const Looks after = looksAfter([&] { show(items_ / "table.csv"); });
      EXPECT_EQ(after.becameLight, 0);
      EXPECT_FALSE(hasLightArea(desktop_.lightnessOfTheScreen()));
    }
  }
}

TEST_F(NoFlashTest, FromOneDocumentToTheNext) {
  for (const char* name : {"guide.md", "data.json", "table.csv", "main.cpp", "guide.md"})
    expectDark(name, [&] { show(items_ / name); });
  expectDark("again", [&] { press("F5"); });
  panel_->close();
  expectDark("after it was closed", [&] { show(items_ / "main.cpp"); });
}

}  // namespace
}  // namespace lumisk::test
