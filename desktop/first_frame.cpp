#include "desktop/first_frame.h"

#include <utility>

namespace lumisk::desktop {
namespace {

/// The engine calls back before each frame, and before the second one only when the first has
/// reached the widget.
constexpr const char* kTwoFrames =
    "await new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)));";

/// Where the page's own scripts cannot have replaced what is called.
constexpr const char* kOwnWorld = "lumisk-host";

}  // namespace

void FirstFrame::wait(WebKitWebView* page, std::function<void()> drawn) {
  stop();
  drawn_ = std::move(drawn);
  asking_ = GRef<GCancellable>::adopt(g_cancellable_new());
  webkit_web_view_call_async_javascript_function(page, kTwoFrames, -1, nullptr, kOwnWorld, nullptr,
                                                 asking_.get(), &FirstFrame::scriptEnded, this);
}

void FirstFrame::stop() {
  if (asking_) g_cancellable_cancel(asking_.get());
  asking_ = {};
}

void FirstFrame::scriptEnded(GObject* page, GAsyncResult* result, gpointer self) {
  GError* error = nullptr;
  JSCValue* const value =
      webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(page), result, &error);
  const bool isCancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) == TRUE;
  g_clear_error(&error);
  if (value != nullptr) g_object_unref(value);
  if (isCancelled) return;  // nobody waits any more, and there may be no `self`
  auto* frame = static_cast<FirstFrame*>(self);
  frame->asking_ = {};
  frame->drawn_();
}

}  // namespace lumisk::desktop
