#include "desktop/first_frame.h"

#include <cmath>
#include <string>
#include <utility>

#include "desktop/curtain.h"
#include "desktop/host_scripts.h"
#include "desktop/text_scale.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kHandler = "lumisk-frame";
constexpr const char* kSignal = "script-message-received::lumisk-frame";

/// By so much, as a part of the whole, the engine leaves a page unzoomed.
constexpr double kInexactZoom = 0.02;

/// Posts the size of the first frame, and of the first in each other size, once it has left the web
/// process. Until it has something to paint, or all of its text, the engine holds the frames back.
/// What is there of a complete page is in the frame that follows at once; one that has its text,
/// and whose scripts are about to begin, is given another frame. Drawn by the processor, a frame
/// goes out before anything else runs in the page; a graphics card is done with it by the next one.
constexpr const char* kScript = R"js(
  const port = window.webkit.messageHandlers['lumisk-frame'];
  const nextFrame = () => new Promise((done) => requestAnimationFrame(done));
  const isPainted = () => performance.getEntriesByType('paint').length > 0;
  // An element of the page may bear the name and would be found in the property's place.
  const readyState = Object.getOwnPropertyDescriptor(Document.prototype, 'readyState').get;
  const isState = (name) => readyState.call(document) === name;
  let isTelling = false;
  let isResized = false;
  async function tell() {
    isTelling = true;
    do {
      isResized = false;
      await nextFrame();
      while (isState('loading') && !isPainted()) await nextFrame();
      if (!isState('complete') && !isPainted()) await nextFrame();
      const size = [innerWidth, innerHeight];
      await (isDrawnByCard ? nextFrame() : new Promise((done) => setTimeout(done)));
      port.postMessage(size);
    } while (isResized);
    isTelling = false;
  }
  addEventListener('resize', (event) => {
    if (!event.isTrusted) return; // of a script of the page's
    isResized = true;
    if (!isTelling) tell();
  });
  tell();
)js";

int itemAt(JSCValue* array, unsigned index) {
  const auto item = GRef<JSCValue>::adopt(jsc_value_object_get_property_at_index(array, index));
  return jsc_value_to_int32(item.get());
}

}  // namespace

void FirstFrame::install(WebKitUserContentManager* manager, bool isDrawnByCard) {
  webkit_user_content_manager_register_script_message_handler(manager, kHandler, kHostWorld);
  const std::string flag =
      std::string("const isDrawnByCard = ") + (isDrawnByCard ? "true" : "false") + ";";
  runAtEachPage(manager, ("(() => {" + flag + kScript + "})();").c_str());
}

FirstFrame::FirstFrame(WebKitWebView* view, unsigned patience)
    : view_(view),
      longestWait_(patience),
      received_(webkit_web_view_get_user_content_manager(view), kSignal,
                G_CALLBACK(&FirstFrame::received), this),
      placed_(curtainOf(view), "placed", G_CALLBACK(&FirstFrame::placed), this) {}

void FirstFrame::await(std::function<void()> drawn) {
  forget();
  drawn_ = std::move(drawn);
}

void FirstFrame::forget() {
  drawn_ = nullptr;
  frame_.reset();
  look_.cancel();
  patience_.cancel();
}

void FirstFrame::received(WebKitUserContentManager*, JSCValue* size, gpointer self) {
  auto* first = static_cast<FirstFrame*>(self);
  if (!first->drawn_) return;
  first->frame_ = Size{itemAt(size, 0), itemAt(size, 1)};
  first->look();
}

/// Not at once: what is shown must not change while it is being laid out.
void FirstFrame::placed(GtkWidget*, gpointer self) {
  auto* first = static_cast<FirstFrame*>(self);
  if (first->frame_) first->look_.after(0, [first] { first->look(); });
}

/// A page that begins before its view has its place on the screen may draw a frame for the size
/// that the view had before. A page counts in points of its own, which its zoom makes larger; the
/// engine zooms it with the size of the desktop's texts, too, but for the last percents.
bool FirstFrame::isInPlace() const {
  const Placement place = placementOf(view_);
  const double texts = textScale(GTK_WIDGET(view_));
  const double point = webkit_web_view_get_zoom_level(view_) * texts;
  const double inexact = texts == 1 ? 0 : kInexactZoom;
  const auto fits = [&](int frame, int view) {
    return std::abs(frame * point - view) <= point + inexact * view;
  };
  return place.isCurrent && fits(frame_->width, place.width) && fits(frame_->height, place.height);
}

void FirstFrame::look() {
  if (isInPlace()) return end();
  if (!patience_.isPending()) patience_.after(longestWait_, [this] { end(); });
}

void FirstFrame::end() {
  const auto drawn = std::exchange(drawn_, nullptr);
  forget();
  drawn();
}

}  // namespace lumisk::desktop
