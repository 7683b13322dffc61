#pragma once

#include <webkit/webkit.h>

namespace lumisk::desktop {

/// A web view with a curtain in front of it. Behind a closed curtain it is as alive as ever, laid
/// out, visible for its page and given the page's frames, but nothing of it is drawn: what is
/// behind it shows, and none of its frames costs a frame of the window.
GType curtainedViewType();

/// `view` is one of that type. The curtain of a new one is open.
void setCurtainClosed(WebKitWebView* view, bool isClosed);

}  // namespace lumisk::desktop
