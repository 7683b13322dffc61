#pragma once

#include <string>
#include <vector>

namespace lumisk::test {

/// A window's number on the display server; 0 for none.
using WindowId = unsigned long;

struct ScreenPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// The windows and the keyboard as another program on the display sees them.
class XDesktop {
 public:
  XDesktop();
  XDesktop(const XDesktop&) = delete;
  XDesktop& operator=(const XDesktop&) = delete;
  ~XDesktop();

  /// What the window manager has taken up, in the order in which it came.
  std::vector<WindowId> windows() const;
  /// The first window of the program that calls itself `programClass`.
  WindowId windowOf(const std::string& programClass) const;
  std::string titleOf(WindowId window) const;
  /// The window that this one belongs to.
  WindowId parentOf(WindowId window) const;
  /// The token of whoever asked for the window, or for the first of its program; empty without one.
  std::string startupIdOf(WindowId window) const;
  ScreenPlace placeOf(WindowId window) const;
  /// Whether keys go to this window, by the word of the server and of the window manager.
  bool hasKeyboard(WindowId window) const;
  /// How light each pixel of the screen is, from 0 to 255, row by row, as a person sees it.
  struct Lightness {
    int width = 0;
    std::vector<unsigned char> pixels;
  };
  Lightness lightnessOfTheScreen() const;
  /// Puts a dock along the upper edge of the screen, which stays as long as this object.
  void reserveTop(int height);
  /// What was copied last, as text; empty when there is none, or its owner does not answer.
  std::string copiedText() const;

 private:
  struct Connection;
  std::vector<unsigned long> numbers(WindowId window, const char* property) const;
  std::string text(WindowId window, unsigned long property) const;

  Connection* connection_;
};

/// Presses keys or turns to the mouse as a person would, in the notation of xdotool.
void pressKeys(const std::string& keys);
enum class MouseButton { Left = 1, Right = 3 };
void clickAt(int x, int y, MouseButton button = MouseButton::Left);
/// Moves the window as a person would drag it there.
void moveWindow(WindowId window, int x, int y);
/// Has the window manager bring the window forward, as its key for that does.
void activateWindow(WindowId window);

}  // namespace lumisk::test
