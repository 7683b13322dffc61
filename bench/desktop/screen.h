#pragma once

#include <X11/Xlib.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumisk::bench {

struct Area {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// The screen as a person sees it: what its pixels are, and a keyboard to press.
class VisibleScreen {
 public:
  VisibleScreen();
  VisibleScreen(const VisibleScreen&) = delete;
  VisibleScreen& operator=(const VisibleScreen&) = delete;
  ~VisibleScreen();

  Area whole() const;
  /// Where the one large window is, if there is one.
  std::optional<Area> window() const;

  /// The pixels of columns of `area`, a few of them: enough to notice any change of a text, and
  /// cheap enough to be taken hundreds of times a second beside what is measured.
  std::vector<std::uint32_t> sample(const Area& area) const;

  void press(KeySym key) const;

 private:
  Display* display_;
};

}  // namespace lumisk::bench
