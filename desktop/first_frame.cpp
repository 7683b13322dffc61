#include "desktop/first_frame.h"

#include <cmath>
#include <string>
#include <utility>

#include "desktop/curtained_view.h"
#include "desktop/host_scripts.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kHandler = "lumisk-frame";
constexpr const char* kSignal = "script-message-received::lumisk-frame";

/// Posts the size of the first frame, and of the first in each other size, once it has left the web
/// process. Until it has something to paint, or all of its text, the engine holds the frames back.
/// Drawn by the processor, a frame goes out before anything else runs in the page; a graphics card
/// is done with it by the next one.
constexpr const char* kScript = R"js(
  const port = window.webkit.messageHandlers['lumisk-frame'];
  const nextFrame = () => new Promise((done) => requestAnimationFrame(done));
  const isPainted = () => performance.getEntriesByType('paint').length > 0;
  async function tell() {
    while (document.readyState === 'loading' && !isPainted()) await nextFrame();
    await nextFrame();
    const size = [innerWidth, innerHeight];
    await (isDrawnByCard ? nextFrame() : new Promise((done) => setTimeout(done)));
    port.postMessage(size);
  }
  addEventListener('resize', tell);
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
      placed_(view, "placed", G_CALLBACK(&FirstFrame::placed), this) {}

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
void FirstFrame::placed(WebKitWebView*, gpointer self) {
  auto* first = static_cast<FirstFrame*>(self);
  if (first->frame_) first->look_.after(0, [first] { first->look(); });
}

/// A page that begins before its view has its place on the screen may draw a frame for the size
/// that the view had before.
bool FirstFrame::isInPlace() const {
  const Placement place = placementOf(view_);
  const double zoom = webkit_web_view_get_zoom_level(view_);
  const auto fits = [zoom](int frame, int view) { return std::abs(frame * zoom - view) <= zoom; };
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
