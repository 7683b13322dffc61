#include "desktop/page_drawing.h"

#include <utility>

#include "desktop/curtain.h"
#include "desktop/picture.h"

namespace lumisk::desktop {
namespace {

constexpr unsigned kLookInterval = 50;  // milliseconds
constexpr unsigned kMostLooks = 400;
/// A page whose script never ends answers nothing.
constexpr unsigned kLongestSettling = 20'000;  // milliseconds

/// A page is complete when its fonts are there, its diagrams are drawn and no more of it is to come
/// by itself, which happens after the load. A diagram with an error in it may never be, and a page
/// that is not seen has no frames.
constexpr const char* kSettled = R"js(
  const end = Date.now() + 3000;
  await Promise.race([document.fonts.ready, new Promise((done) => setTimeout(done, 3000))]);
  const isDrawn = (d) => d.querySelector('svg') !== null || d.textContent.trim() === '';
  const isGrowing = () => document.querySelector('#content[aria-busy]') !== null;
  while (Date.now() < end &&
         (isGrowing() || ![...document.querySelectorAll('div.mermaid')].every(isDrawn)))
    await new Promise((done) => setTimeout(done, 20));
  await new Promise((done) => {
    if (!isSeen) return done();
    setTimeout(done, 10000);
    requestAnimationFrame(() => requestAnimationFrame(done));
  });
)js";

/// Whether the widget and all that it is in can be seen through to.
bool isSeen(GtkWidget* widget) {
  for (; widget != nullptr; widget = gtk_widget_get_parent(widget))
    if (gtk_widget_get_opacity(widget) <= 0) return false;
  return true;
}

}  // namespace

PageDrawing::~PageDrawing() { stop(); }

void PageDrawing::stop() {
  nextLook_.cancel();
  longestWait_.cancel();
  settled_.forget();
  g_cancellable_cancel(asking_.get());
  asking_ = GRef<GCancellable>::adopt(g_cancellable_new());
}

void PageDrawing::wait(WebKitWebView* page, std::function<void()> drawn) {
  stop();
  page_ = GRef<WebKitWebView>::retain(page);
  drawn_ = std::move(drawn);
  longestWait_.after(kLongestSettling, [this] {
    stop();
    drawn_();
  });
  settled_.ask(page, kSettled, "isSeen", isSeen(GTK_WIDGET(page)), [this] { askForPicture(); });
}

void PageDrawing::askForPicture() {
  if (!isSeen(GTK_WIDGET(page_.get()))) {
    stop();
    return drawn_();
  }
  webkit_web_view_get_snapshot(page_.get(), WEBKIT_SNAPSHOT_REGION_VISIBLE,
                               WEBKIT_SNAPSHOT_OPTIONS_TRANSPARENT_BACKGROUND, asking_.get(),
                               &PageDrawing::pictureCame, this);
}

void PageDrawing::pictureCame(GObject* page, GAsyncResult* result, gpointer self) {
  GError* error = nullptr;
  const auto picture = GRef<GdkTexture>::adopt(
      webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(page), result, &error));
  const bool isCancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) == TRUE;
  g_clear_error(&error);
  if (isCancelled) return;
  auto* drawing = static_cast<PageDrawing*>(self);
  drawing->longestWait_.cancel();  // the looks are counted
  const bool hasContent = picture && !isBlank(picture.get());
  drawing->look(hasContent ? kMostLooks : 0);
}

void PageDrawing::look(unsigned times) {
  const GRef<GdkTexture> shown = pictureOf(curtainOf(page_.get()));
  if (times == 0 || (shown && !isBlank(shown.get()))) return drawn_();
  nextLook_.after(kLookInterval, [this, times] { look(times - 1); });
}

}  // namespace lumisk::desktop
