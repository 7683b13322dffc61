#include "desktop/default_application.h"

namespace lumisk::desktop {

GRef<GAppInfo> defaultApplication(const std::string& contentType) {
  if (contentType.empty()) return {};
  return GRef<GAppInfo>::adopt(g_app_info_get_default_for_type(contentType.c_str(), FALSE));
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
