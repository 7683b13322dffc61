#pragma once

#include <webkit/webkit.h>

namespace lumisk::desktop {

/// A curtain, a widget of its own, in front of a web view. Behind a closed one the view is as alive
/// as ever, laid out, visible for its page and given the page's frames, but nothing of it is drawn:
/// what is behind it shows. Nor is the window drawn anew for its frames, unless a graphics card
/// makes them (`isDrawnByCard`): it makes the next one only once the one before was taken. Emits
/// "placed" each time the view has been laid out. Starts open, and holds a reference of the view.
GtkWidget* curtainNew(WebKitWebView* view, bool isDrawnByCard);

/// In these `view` is behind a curtain.
GtkWidget* curtainOf(WebKitWebView* view);
void setCurtainClosed(WebKitWebView* view, bool isClosed);
bool isCurtainClosed(WebKitWebView* view);

/// How a view was last laid out.
struct Placement {
  /// In pixels of the layout; 0 if it never was.
  int width = 0;
  int height = 0;
  /// Whether that was since it last came on the screen. A view is told that it is seen some time
  /// before it is told its size.
  bool isCurrent = false;
};
Placement placementOf(WebKitWebView* view);

}  // namespace lumisk::desktop
