#pragma once

#include <webkit/webkit.h>

#include <functional>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// Waits until a page that the engine has taken up is drawn for the first time. Until then the
/// widget still shows the last frame of the page before.
class FirstFrame {
 public:
  FirstFrame() = default;
  FirstFrame(const FirstFrame&) = delete;
  FirstFrame& operator=(const FirstFrame&) = delete;
  ~FirstFrame() { stop(); }

  /// Calls `drawn` once there is a frame of the page, or when no word of one can come any more.
  /// Forgets an earlier page. The widget must not be wholly transparent: the engine makes frames
  /// only for a widget that draws them.
  void wait(WebKitWebView* page, std::function<void()> drawn);
  /// `drawn` will not be called any more.
  void stop();

 private:
  static void scriptEnded(GObject* page, GAsyncResult* result, gpointer self);

  std::function<void()> drawn_;
  GRef<GCancellable> asking_;
};

}  // namespace lumisk::desktop
