#pragma once

#include <functional>
#include <string>
#include <variant>

#include "core/file_url.h"

namespace lumisk::desktop {

/// Why there is nothing on this machine's disks to show for an address.
enum class NoItemReason {
  BadAddress,   ///< it is no address at all
  NotLocal,     ///< it names something that no path leads to
  Unreachable,  ///< it could not be looked up
};

/// What the arrow keys do: move the selection of whoever asked for the preview, or scroll it.
enum class Arrows { Select, Scroll };

/// What the panel is asked to show.
struct PreviewRequest {
  /// The address as the caller wrote it; the panel gives it back as `currentUri`.
  std::string uri = {};
  std::variant<FileURL, NoItemReason> item = NoItemReason::BadAddress;
  /// The caller's window, in the form that `parseWindowHandle` reads; "" for none.
  std::string parentHandle = {};
  /// Shows the compositor that the person asked for this window; "" when the caller sent none.
  std::string activationToken = {};
  Arrows arrows = Arrows::Select;
  /// Whether the person asked to see it, and not just chose another item while a preview was there:
  /// a walk through the file manager must leave the keyboard where it is.
  bool comesForward = false;
};

/// Which way the person wants the selection in the file manager to go; the values of GTK's own
/// direction type, which the interface sends as they are.
enum class SelectionDirection : unsigned { Up = 2, Down = 3, Left = 4, Right = 5 };

/// The one preview window of the program, as the services see it. On the main thread only.
class PreviewHost {
 public:
  virtual ~PreviewHost() = default;

  /// Shows the item in the window that is there, or opens one.
  virtual void show(const PreviewRequest& request) = 0;
  /// Hides the window; nothing when there is none.
  virtual void close() = 0;
  /// Prepares in idle time what makes the next first preview fast. Harmless at any time.
  virtual void warmUp() = 0;

  /// Whether the window is on the screen, or about to come.
  virtual bool isVisible() const = 0;
  /// What `show` was last given, as long as the window is visible; "" otherwise.
  virtual std::string currentUri() const = 0;
  virtual std::string parentHandle() const = 0;

  /// `handler` is called after the window has become visible and after it has gone.
  virtual void setOnVisibilityChanged(std::function<void()> handler) = 0;
  /// `handler` is called when the window has gone because the person wanted it to, and not by
  /// `close`; before the one for the visibility.
  virtual void setOnClosedByPerson(std::function<void()> handler) = 0;
  /// `handler` is called when the person presses an arrow key that the preview does not use itself.
  virtual void setOnSelectionEvent(std::function<void(SelectionDirection)> handler) = 0;
};

}  // namespace lumisk::desktop
