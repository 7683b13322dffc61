#include "bench/desktop/watch.h"

#include <chrono>
#include <cstdlib>

namespace lumisk::bench {
namespace {

constexpr int kBars = 110;  // pixels: title and modes
constexpr int kEdge = 6;    // pixels

// Between two looks at the screen; what is measured has to run as well.
constexpr double kPause = 0.003;  // seconds

constexpr int kMostEdgesWithoutText = 60;
constexpr int kLeastContrast = 16;  // of 255

using Pixels = std::vector<std::uint32_t>;

/// Whether a person would see a border between the two: a page that is covered shines through a
/// little.
bool isEdge(std::uint32_t one, std::uint32_t other) {
  for (int shift = 0; shift < 24; shift += 8) {
    const int difference =
        static_cast<int>((one >> shift) & 0xFFU) - static_cast<int>((other >> shift) & 0xFFU);
    if (std::abs(difference) > kLeastContrast) return true;
  }
  return false;
}

/// Looks at the page's part for as long as it changes.
class PageWatch {
 public:
  PageWatch(const VisibleScreen& screen, const Area& area) : screen_(screen), area_(area) {}

  /// What is there now is no change.
  void begin() {
    pixels_ = screen_.sample(area_);
    wasEmpty_ = !showsText();
  }

  void look(double time, Seen& seen) {
    Pixels pixels = screen_.sample(area_);
    if (pixels == pixels_) return;
    pixels_ = std::move(pixels);
    lastChange_ = time;
    if (seen.firstOfPage == 0) seen.firstOfPage = time;
    wasEmpty_ = wasEmpty_ || !showsText();
    if (seen.firstText == 0 && wasEmpty_ && showsText()) seen.firstText = time;
    seen.complete = time;
  }
  double lastChange() const { return lastChange_; }
  /// Along a line through text the pixels change all the time; an empty page has a few edges.
  bool showsText() const {
    int edges = 0;
    for (std::size_t i = 1; i < pixels_.size(); ++i)
      edges += isEdge(pixels_[i], pixels_[i - 1]) ? 1 : 0;
    return edges > kMostEdgesWithoutText;
  }

 private:
  const VisibleScreen& screen_;
  Area area_;
  Pixels pixels_;
  double lastChange_ = 0;
  bool wasEmpty_ = true;
};

}  // namespace

double now() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(time).count();
}

Area pageArea(const Area& window) {
  return {window.x + kEdge, window.y + kBars, window.width - 2 * kEdge,
          window.height - kBars - kEdge};
}

std::optional<Seen> watch(const VisibleScreen& screen, const std::function<void()>& request,
                          const WatchOptions& options) {
  const Pixels before = screen.sample(screen.whole());
  const auto shown = screen.window();
  std::optional<PageWatch> page;
  if (shown) page.emplace(screen, pageArea(*shown)).begin();
  Seen seen;
  const double start = now();
  request();
  for (double time = 0; time < options.longest; time = now() - start) {
    if (options.meanwhile) options.meanwhile(time);
    receiveWhatHasCome();
    if (seen.firstPixels == 0 && screen.sample(screen.whole()) != before) {
      seen.firstPixels = now() - start;
    }
    if (seen.firstPixels != 0) {
      const auto window = page ? std::nullopt : screen.window();
      if (window) page.emplace(screen, pageArea(*window));
      if (page) page->look(now() - start, seen);
      const bool isQuiet = page && now() - start - page->lastChange() > options.quiet;
      if (isQuiet && seen.complete != 0 && page->showsText()) return seen;
    }
    wait(kPause);
  }
  return std::nullopt;
}

}  // namespace lumisk::bench
