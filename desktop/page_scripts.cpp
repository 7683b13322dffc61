#include "desktop/page_scripts.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace lumisk::desktop {
namespace {

constexpr std::string_view literal(std::string_view text) { return text; }

std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string all;
  for (const std::string_view piece : pieces) all += piece;
  return all;
}

}  // namespace

void installPageScripts(WebKitUserContentManager* manager) {
  static const char* const kPages[] = {"file:///*", nullptr};
  static const std::string kScripts[] = {joined({
#include "embedded/beginning_first_js.inc"
                                         }),
                                         joined({
#include "embedded/inert_diagrams_js.inc"
                                         })};
  for (const std::string& script : kScripts) {
    WebKitUserScript* const added =
        webkit_user_script_new(script.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, kPages, nullptr);
    webkit_user_content_manager_add_script(manager, added);
    webkit_user_script_unref(added);
  }
}

}  // namespace lumisk::desktop
