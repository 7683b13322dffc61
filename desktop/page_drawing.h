#pragma once

#include <webkit/webkit.h>

#include <functional>

#include "desktop/gref.h"
#include "desktop/host_scripts.h"

namespace lumisk::desktop {

/// Waits until a page that has been loaded is drawn on screen.
///
/// A load has finished when the document has, and a page can be seen from its first frame on. What
/// comes after that by itself (fonts, diagrams, the rest of a long text) is waited for in the page,
/// and its frames reach the widget later still: on a busy machine seconds after a fresh view's
/// first load. No event tells of that, so the engine is asked for a picture of the page, and the
/// widget is looked at until it shows one too. `page` is behind a curtain.
class PageDrawing {
 public:
  PageDrawing() = default;
  PageDrawing(const PageDrawing&) = delete;
  PageDrawing& operator=(const PageDrawing&) = delete;
  ~PageDrawing();

  /// Calls `drawn` when the page is on screen, and in the end also when it never gets there.
  /// Forgets an earlier page.
  void wait(WebKitWebView* page, std::function<void()> drawn);

 private:
  void askForPicture();
  static void pictureCame(GObject* page, GAsyncResult* result, gpointer self);
  void look(unsigned times);
  void stop();

  GRef<WebKitWebView> page_;
  std::function<void()> drawn_;
  PageQuestion settled_;
  GRef<GCancellable> asking_ = GRef<GCancellable>::adopt(g_cancellable_new());
  Deferred nextLook_;
  Deferred longestWait_;
};

}  // namespace lumisk::desktop
