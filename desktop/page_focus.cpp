#include "desktop/page_focus.h"

#include "desktop/host_scripts.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kHandler = "lumisk-focus";
constexpr const char* kSignal = "script-message-received::lumisk-focus";

/// Posts the number of a PageFocus when it changes, and in any case at the start, so that nothing
/// is left of the page before. An element of the page may bear the name of one of the document's
/// properties and would then be found in its place; hence the property's own getter.
constexpr const char* kScript = R"js(
(() => {
  const port = window.webkit.messageHandlers['lumisk-focus'];
  const activeElement =
      Object.getOwnPropertyDescriptor(Document.prototype, 'activeElement').get;
  const [none, link, button, text] = [0, 1, 2, 3];
  const isPressed = ['button', 'submit', 'reset', 'image', 'checkbox', 'file', 'color'];
  const takesKeys = 'input, textarea, select, iframe, object, embed, audio[controls], video[controls]';
  let isAskedFor = false;
  let isByTab = false;
  let told;

  function focused() {
    let element = activeElement.call(document);
    while (element && element.shadowRoot && element.shadowRoot.activeElement)
      element = element.shadowRoot.activeElement;
    return element;
  }
  function use(element) {
    if (!element || !isAskedFor) return none;
    const isButton = element.matches('button, summary, [role="button"]') ||
        (element.matches('input') && isPressed.includes(element.type));
    if (isButton) return isByTab ? button : none;
    if (element.matches('a, area')) return isByTab ? link : none;
    return element.isContentEditable || element.matches(takesKeys) ? text : none;
  }
  function tell() {
    const now = use(focused());
    if (now !== told) port.postMessage(now);
    told = now;
  }
  function asked(event) {
    if (!event.isTrusted) return;
    isAskedFor = true;
    if (event.type === 'pointerdown') isByTab = false;
    if (event.key === 'Tab') isByTab = true;
    tell();
  }
  for (const type of ['keydown', 'pointerdown']) addEventListener(type, asked, true);
  for (const type of ['focusin', 'focusout']) addEventListener(type, tell, true);
  tell();
})();
)js";

}  // namespace

void PageFocusWatch::install(WebKitUserContentManager* manager) {
  webkit_user_content_manager_register_script_message_handler(manager, kHandler, kHostWorld);
  runAtEachPage(manager, kScript);
}

PageFocusWatch::PageFocusWatch(WebKitUserContentManager* manager)
    : received_(manager, kSignal, G_CALLBACK(&PageFocusWatch::received), this) {}

void PageFocusWatch::received(WebKitUserContentManager*, JSCValue* value, gpointer self) {
  static_cast<PageFocusWatch*>(self)->focus_ = static_cast<PageFocus>(jsc_value_to_int32(value));
}

}  // namespace lumisk::desktop
