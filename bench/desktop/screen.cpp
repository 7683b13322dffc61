#include "bench/desktop/screen.h"

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace lumisk::bench {
namespace {

constexpr int kColumnDistance = 40;  // pixels
constexpr int kLeastWindow = 300;    // pixels; what is smaller is no preview

}  // namespace

VisibleScreen::VisibleScreen() : display_(XOpenDisplay(nullptr)) {
  if (display_ != nullptr) return;
  std::fputs("desktop_bench: there is no X display; tests/desktop/with-display brings one\n",
             stderr);
  std::exit(1);
}

VisibleScreen::~VisibleScreen() { XCloseDisplay(display_); }

Area VisibleScreen::whole() const {
  const int screen = DefaultScreen(display_);
  return {0, 0, DisplayWidth(display_, screen), DisplayHeight(display_, screen)};
}

std::optional<Area> VisibleScreen::window() const {
  Window root = 0;
  Window parent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display_, DefaultRootWindow(display_), &root, &parent, &children, &count) == 0)
    return std::nullopt;
  std::optional<Area> found;
  for (unsigned i = 0; i < count; ++i) {
    XWindowAttributes window{};
    if (XGetWindowAttributes(display_, children[i], &window) == 0) continue;
    if (window.map_state == IsViewable && window.width > kLeastWindow &&
        window.height > kLeastWindow)
      found = Area{window.x, window.y, window.width, window.height};
  }
  if (children != nullptr) XFree(children);
  return found;
}

std::vector<std::uint32_t> VisibleScreen::sample(const Area& area) const {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(area.width / kColumnDistance + 1) *
                 static_cast<std::size_t>(area.height));
  for (int x = area.x + kColumnDistance / 2; x < area.x + area.width; x += kColumnDistance) {
    XImage* column = XGetImage(display_, DefaultRootWindow(display_), x, area.y, 1,
                               static_cast<unsigned>(area.height), AllPlanes, ZPixmap);
    if (column == nullptr) continue;
    for (int y = 0; y < area.height; ++y) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, column->data + static_cast<std::ptrdiff_t>(y) * column->bytes_per_line,
                  sizeof pixel);
      pixels.push_back(pixel);
    }
    XDestroyImage(column);
  }
  return pixels;
}

void VisibleScreen::press(KeySym key) const {
  const unsigned code = XKeysymToKeycode(display_, key);
  XTestFakeKeyEvent(display_, code, True, CurrentTime);
  XTestFakeKeyEvent(display_, code, False, CurrentTime);
  XFlush(display_);
}

}  // namespace lumisk::bench
