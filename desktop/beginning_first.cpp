#include "desktop/beginning_first.h"

#include <string>
#include <string_view>

#include "desktop/host_scripts.h"

namespace lumisk::desktop {
namespace {

/// Shorter ones are complete within a frame or two; a fourth of it is the fixed text.
constexpr std::size_t kLongPage = std::size_t{16} * 1024;  // bytes

std::string script() {
  const auto literal = [](std::string_view text) { return text; };
  std::string all;
  for (const std::string_view piece : {
#include "embedded/beginning_first_js.inc"
       })
    all += piece;
  return all;
}

}  // namespace

Showing showingOfCode(std::size_t size) {
  return size < kLongPage ? Showing::AtOnce : Showing::BeginningFirst;
}

void heedBeginningFirst(WebKitUserContentManager* manager) {
  // In the page's own world, whose highlighter it calls.
  static const char* const kPages[] = {"file:///*", nullptr};
  WebKitUserScript* const added =
      webkit_user_script_new(script().c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                             WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, kPages, nullptr);
  webkit_user_content_manager_add_script(manager, added);
  webkit_user_script_unref(added);
}

void showAll(WebKitWebView* page) {
  runInPage(page, "dispatchEvent(new Event('lumisk-show-all'))");
}

}  // namespace lumisk::desktop
