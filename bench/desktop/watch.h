#pragma once

#include <functional>
#include <optional>

#include "bench/desktop/previewer.h"
#include "bench/desktop/screen.h"

namespace lumisk::bench {

/// What was seen after a request, in seconds from it.
struct Seen {
  /// Any pixel of the screen changed: the panel is there.
  double firstPixels = 0;
  /// The page's part of the panel changed for the first time; of a panel that was not there, the
  /// panel itself.
  double firstOfPage = 0;
  /// Text was in it for the first time; of a panel that was there, after it had been empty.
  double firstText = 0;
  /// It changed for the last time: what is seen of the page, its fonts, colours, formulas and
  /// diagrams are there. Of a long page there may be more to come below.
  double complete = 0;
};

struct WatchOptions {
  /// How long nothing may change before the page counts as complete.
  double quiet = 0.8;
  /// How long to wait for a first change.
  double longest = 60;
  /// Called over and over with the time since the request.
  std::function<void(double)> meanwhile = {};
};

/// Makes the request and watches the screen. Nothing when nothing ever changed.
std::optional<Seen> watch(const VisibleScreen& screen, const std::function<void()>& request,
                          const WatchOptions& options = {});

/// The page's part of a panel: below the title and the modes, clear of the window's edges.
Area pageArea(const Area& window);

double now();

}  // namespace lumisk::bench
