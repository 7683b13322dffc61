#include "desktop/default_application.h"

#include <algorithm>
#include <string_view>

namespace lumisk::desktop {
namespace {

/// Our desktop entries: the program, and its place in the file manager's "Open With".
constexpr std::string_view kOwnEntries[] = {"org.lumisk.Previewer.desktop",
                                            "z-org.lumisk.OpenWith.desktop"};

bool isOurs(GAppInfo* application) {
  const char* id = g_app_info_get_id(application);
  return id != nullptr && std::find(std::begin(kOwnEntries), std::end(kOwnEntries),
                                    std::string_view(id)) != std::end(kOwnEntries);
}

}  // namespace

GRef<GAppInfo> defaultApplication(const std::string& contentType) {
  if (contentType.empty()) return {};
  auto found = GRef<GAppInfo>::adopt(g_app_info_get_default_for_type(contentType.c_str(), FALSE));
  if (!found || !isOurs(found.get())) return found;
  // The person has made a previewer the default, or there is none and the desktop took the first.
  found = {};
  GList* all = g_app_info_get_all_for_type(contentType.c_str());
  for (GList* each = all; each != nullptr && !found; each = each->next)
    if (!isOurs(G_APP_INFO(each->data))) found = GRef<GAppInfo>::retain(G_APP_INFO(each->data));
  g_list_free_full(all, g_object_unref);
  return found;
}

bool openWith(GAppInfo* application, const FileURL& url, GdkDisplay* display) {
  const auto context =
      GRef<GdkAppLaunchContext>::adopt(gdk_display_get_app_launch_context(display));
  const std::string uri = url.absoluteString();
  GList uris{const_cast<char*>(uri.c_str()), nullptr, nullptr};
  return g_app_info_launch_uris(application, &uris, G_APP_LAUNCH_CONTEXT(context.get()), nullptr) ==
         TRUE;
}

}  // namespace lumisk::desktop
