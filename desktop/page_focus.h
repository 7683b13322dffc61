#pragma once

#include <webkit/webkit.h>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// What has the focus in a page, as far as it has a use for keys that are the panel's elsewhere.
enum class PageFocus {
  None,
  Link,    ///< takes Return
  Button,  ///< takes Return and Space
  Text,    ///< takes all that is typed
};

/// The host's word on the pages of a view: which of their elements has the focus.
///
/// Each page carries a script of the host's, in a world of its own that the page's scripts neither
/// see nor can post from. It counts only what a person has asked for: links and buttons that were
/// come to with Tab, since after a click the next Space is to close the panel all the same, and
/// fields once there was a click or a key in the page, since a page may give itself the focus.
class PageFocusWatch {
 public:
  /// Has the pages of all views with this manager watched; once for each manager.
  static void install(WebKitUserContentManager* manager);

  explicit PageFocusWatch(WebKitUserContentManager* manager);

  PageFocus focus() const { return focus_; }
  /// A page of the host's own is about to come, in which nothing has the focus.
  void forget() { focus_ = PageFocus::None; }

 private:
  static void received(WebKitUserContentManager*, JSCValue* value, gpointer self);

  PageFocus focus_ = PageFocus::None;
  SignalHandler received_;
};

}  // namespace lumisk::desktop
