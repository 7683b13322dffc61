#pragma once

#include <webkit/webkit.h>

namespace lumisk::desktop {

/// A web view with a curtain in front of it. Behind a closed curtain it is as alive as ever, laid
/// out, visible for its page and given the page's frames, but nothing of it is drawn: what is
/// behind it shows, and nothing is painted for its frames. Emits "placed" each time it has been
/// laid out.
GType curtainedViewType();

/// `view` is one of that type. The curtain of a new one is open.
void setCurtainClosed(WebKitWebView* view, bool isClosed);
bool isCurtainClosed(WebKitWebView* view);

/// How the view, one of that type, was last laid out.
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
