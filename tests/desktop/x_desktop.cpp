#include "x_desktop.h"

#include <gtest/gtest.h>

// After the others: these define short common words.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <chrono>
#include <cstddef>
#include <thread>

#include "support/process.h"

namespace lumisk::test {
namespace {

constexpr long kLongestProperty = 1 << 20;  // 32-bit units
constexpr auto kLongestAnswer = std::chrono::seconds(2);

/// Windows go while they are asked about; that is no error here.
int ignoreError(Display*, XErrorEvent*) { return 0; }

/// One property of a window, freed when it goes.
class Property {
 public:
  Property(Display* display, Window window, Atom name) {
    Atom type = 0;
    unsigned long rest = 0;
    XGetWindowProperty(display, window, name, 0, kLongestProperty, False, AnyPropertyType, &type,
                       &format_, &count_, &rest, &bytes_);
  }
  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;
  ~Property() {
    if (bytes_ != nullptr) XFree(bytes_);
  }

  std::vector<unsigned long> numbers() const {
    if (bytes_ == nullptr || format_ != 32) return {};
    const auto* first = reinterpret_cast<const unsigned long*>(bytes_);
    return {first, first + count_};
  }
  std::string text() const {
    if (bytes_ == nullptr || format_ != 8) return {};
    return {reinterpret_cast<const char*>(bytes_), count_};
  }

 private:
  int format_ = 0;
  unsigned long count_ = 0;
  unsigned char* bytes_ = nullptr;
};

void runXdotool(std::vector<std::string> words) {
  words.insert(words.begin(), {"/usr/bin/env", "xdotool"});
  const ProcessResult result = runProcess(words);
  EXPECT_EQ(result.exitStatus, 0) << result.standardError;
}

}  // namespace

struct XDesktop::Connection {
  Display* display = XOpenDisplay(nullptr);
  Window own = 0;

  Atom atom(const char* name) const { return XInternAtom(display, name, False); }
  Window root() const { return DefaultRootWindow(display); }
  Window parentWindowOf(Window window) const {
    Window top = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &top, &parent, &children, &count) == 0) return 0;
    if (children != nullptr) XFree(children);
    return parent;
  }
};

XDesktop::XDesktop() : connection_(new Connection) {
  XSetErrorHandler(ignoreError);
  if (connection_->display == nullptr) {
    ADD_FAILURE() << "no display";
    return;
  }
  connection_->own =
      XCreateSimpleWindow(connection_->display, connection_->root(), 0, 0, 1, 1, 0, 0, 0);
}

XDesktop::~XDesktop() {
  if (connection_->display != nullptr) XCloseDisplay(connection_->display);
  delete connection_;
}

std::vector<unsigned long> XDesktop::numbers(WindowId window, const char* property) const {
  return Property(connection_->display, window, connection_->atom(property)).numbers();
}

std::string XDesktop::text(WindowId window, unsigned long property) const {
  return Property(connection_->display, window, property).text();
}

std::vector<WindowId> XDesktop::windows() const {
  return numbers(connection_->root(), "_NET_CLIENT_LIST");
}

WindowId XDesktop::windowOf(const std::string& programClass) const {
  for (const WindowId window : windows()) {
    // Two texts, the instance and the class, each with its end.
    const std::string classes = text(window, XA_WM_CLASS);
    if (classes.find(programClass + '\0') != std::string::npos) return window;
  }
  return 0;
}

std::string XDesktop::titleOf(WindowId window) const {
  return text(window, connection_->atom("_NET_WM_NAME"));
}

WindowId XDesktop::parentOf(WindowId window) const {
  Window parent = 0;
  XGetTransientForHint(connection_->display, window, &parent);
  return parent;
}

std::string XDesktop::startupIdOf(WindowId window) const {
  const Atom startupId = connection_->atom("_NET_STARTUP_ID");
  const std::string own = text(window, startupId);
  const auto leader = numbers(window, "WM_CLIENT_LEADER");
  return !own.empty() || leader.empty() ? own : text(leader.front(), startupId);
}

ScreenPlace XDesktop::placeOf(WindowId window) const {
  XWindowAttributes attributes;
  if (XGetWindowAttributes(connection_->display, window, &attributes) == 0) return {};
  Window child = 0;
  ScreenPlace place = {0, 0, attributes.width, attributes.height};
  XTranslateCoordinates(connection_->display, window, connection_->root(), 0, 0, &place.x, &place.y,
                        &child);
  return place;
}

bool XDesktop::hasKeyboard(WindowId window) const {
  Window focus = 0;
  int reversion = 0;
  XGetInputFocus(connection_->display, &focus, &reversion);
  const auto active = numbers(connection_->root(), "_NET_ACTIVE_WINDOW");
  // The toolkit takes keys by a window within its own.
  const bool isFocused = focus == window || connection_->parentWindowOf(focus) == window;
  return window != 0 && isFocused && !active.empty() && active.front() == window;
}

std::string XDesktop::copiedText() const {
  Display* const display = connection_->display;
  const Atom property = connection_->atom("LUMISK_TEST_COPIED");
  XDeleteProperty(display, connection_->own, property);
  XConvertSelection(display, connection_->atom("CLIPBOARD"), connection_->atom("UTF8_STRING"),
                    property, connection_->own, CurrentTime);
  const auto end = std::chrono::steady_clock::now() + kLongestAnswer;
  XEvent event;
  while (XCheckTypedWindowEvent(display, connection_->own, SelectionNotify, &event) == False) {
    if (std::chrono::steady_clock::now() > end) return {};
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return event.xselection.property == 0 ? "" : text(connection_->own, property);
}

XDesktop::Lightness XDesktop::lightnessOfTheScreen() const {
  Display* const display = connection_->display;
  const int screen = DefaultScreen(display);
  const int width = DisplayWidth(display, screen);
  const int height = DisplayHeight(display, screen);
  XImage* const image = XGetImage(display, connection_->root(), 0, 0, static_cast<unsigned>(width),
                                  static_cast<unsigned>(height), AllPlanes, ZPixmap);
  if (image == nullptr || image->bits_per_pixel != 32) {
    ADD_FAILURE() << "no picture of the screen";
    return {};
  }
  Lightness result{width, {}};
  result.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    const char* pixel = image->data + static_cast<std::ptrdiff_t>(y) * image->bytes_per_line;
    for (int x = 0; x < width; ++x, pixel += 4) {
      const auto colour = [&](int i) { return static_cast<unsigned char>(pixel[i]); };
      result.pixels.push_back(static_cast<unsigned char>((colour(0) + colour(1) + colour(2)) / 3));
    }
  }
  XDestroyImage(image);
  return result;
}

void XDesktop::reserveTop(int height) {
  Display* const display = connection_->display;
  const Atom cardinal = XA_CARDINAL;
  const auto width = static_cast<unsigned>(DisplayWidth(display, DefaultScreen(display)));
  const Window dock = XCreateSimpleWindow(display, connection_->root(), 0, 0, width,
                                          static_cast<unsigned>(height), 0, 0, 0);
  const Atom type = connection_->atom("_NET_WM_WINDOW_TYPE_DOCK");
  const auto set = [&](const char* property, Atom kind, const auto* values, int count) {
    XChangeProperty(display, dock, connection_->atom(property), kind, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(values), count);
  };
  // Left, right, top, bottom, then where each begins and ends.
  const long strut[12] = {0, 0, height, 0, 0, 0, 0, 0, 0, static_cast<long>(width) - 1, 0, 0};
  set("_NET_WM_WINDOW_TYPE", XA_ATOM, &type, 1);
  set("_NET_WM_STRUT_PARTIAL", cardinal, strut, 12);
  set("_NET_WM_STRUT", cardinal, strut, 4);
  XMapWindow(display, dock);
  XFlush(display);
}

void pressKeys(const std::string& keys) { runXdotool({"key", "--clearmodifiers", keys}); }

void clickAt(int x, int y, MouseButton button) {
  runXdotool({"mousemove", "--sync", std::to_string(x), std::to_string(y), "click",
              std::to_string(static_cast<int>(button))});
}

void moveWindow(WindowId window, int x, int y) {
  runXdotool(
      {"windowmove", "--sync", std::to_string(window), std::to_string(x), std::to_string(y)});
}

void activateWindow(WindowId window) {
  runXdotool({"windowactivate", "--sync", std::to_string(window)});
}

}  // namespace lumisk::test
