#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <optional>

#include "desktop/gref.h"
#include "desktop/panel_size.h"

namespace lumisk::desktop {

/// Waits until a frame of a view's page has left the web process, in the size of the view.
///
/// Each page tells of its frames by itself, by a script of the host's that is in it from the start.
/// A script that the host runs in a page that is there counts as a click of the person's, and the
/// page might begin to play as after one.
class FirstFrame {
 public:
  /// Has the pages of all views with this manager tell; once for each manager. `isDrawnByCard` is
  /// whether a graphics card draws them.
  static void install(WebKitUserContentManager* manager, bool isDrawnByCard);

  /// A page is taken as it is when its frames are of another size for so long: its view is being
  /// resized, or the engine counts otherwise.
  static constexpr unsigned kPatience = 300;  // milliseconds

  /// `view` is behind a curtain.
  explicit FirstFrame(WebKitWebView* view, unsigned patience = kPatience);

  /// Calls `drawn` for a frame of the page that has just come, from now on. A page that is not seen
  /// has none, nor has one whose own scripts never end.
  void await(std::function<void()> drawn);
  void forget();
  bool isAwaited() const { return static_cast<bool>(drawn_); }

 private:
  static void received(WebKitUserContentManager*, JSCValue* size, gpointer self);
  static void placed(GtkWidget*, gpointer self);
  bool isInPlace() const;
  void look();
  void end();

  WebKitWebView* view_;
  unsigned longestWait_;
  std::function<void()> drawn_;
  std::optional<Size> frame_;  ///< of the page, in its own points
  Deferred look_;
  Deferred patience_;
  SignalHandler received_;
  SignalHandler placed_;
};

}  // namespace lumisk::desktop
