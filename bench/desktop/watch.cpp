#include "bench/desktop/watch.h"

#include <chrono>

namespace lumisk::bench {
namespace {

constexpr int kBars = 110;  // pixels: title and modes
constexpr int kEdge = 6;    // pixels

// Between two looks at the screen; what is measured has to run as well.
constexpr double kPause = 0.003;  // seconds

using Pixels = std::vector<std::uint32_t>;

/// Looks at the page's part for as long as it changes.
class PageWatch {
 public:
  PageWatch(const VisibleScreen& screen, const Area& area) : screen_(screen), area_(area) {}

  void look(double time, Seen& seen) {
    Pixels pixels = screen_.sample(area_);
    const bool isFirst = pixels_.empty();
    if (pixels == pixels_) return;
    pixels_ = std::move(pixels);
    lastChange_ = time;
    if (isFirst) return;
    if (seen.firstOfPage == 0) seen.firstOfPage = time;
    seen.complete = time;
  }
  double lastChange() const { return lastChange_; }

 private:
  const VisibleScreen& screen_;
  Area area_;
  Pixels pixels_;
  double lastChange_ = 0;
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
      const auto window = shown ? shown : screen.window();
      if (!page && window) page.emplace(screen, pageArea(*window));
      if (page) page->look(now() - start, seen);
      if (seen.complete != 0 && now() - start - page->lastChange() > options.quiet) return seen;
    }
    wait(kPause);
  }
  return std::nullopt;
}

}  // namespace lumisk::bench
