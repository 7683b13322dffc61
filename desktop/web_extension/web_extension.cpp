// The web-process extension: answers the pages' requests for their client libraries from the
// installed copies. WebKit loads it into each web process and calls the function at the end.

#include <webkit/webkit-web-process-extension.h>

#include <memory>

#include "desktop/web_extension/library_map.h"
#include "desktop/web_extension/store_message.h"

namespace {

using lumisk::desktop::LibraryMap;

/// Rewrites the request's address when the store answers it. TRUE: nothing is loaded.
gboolean sendRequest(WebKitWebPage* page, WebKitURIRequest* request, WebKitURIResponse*,
                     gpointer data) {
  const auto& map = *static_cast<const LibraryMap*>(data);
  const char* const uri = webkit_uri_request_get_uri(request);
  const char* const pageUri = webkit_web_page_get_uri(page);
  if (map.isSpared(uri, pageUri == nullptr ? "" : pageUri)) return TRUE;
  if (const auto file = map.installedFile(uri)) webkit_uri_request_set_uri(request, file->c_str());
  return FALSE;
}

void pageCreated(WebKitWebProcessExtension*, WebKitWebPage* page, gpointer map) {
  g_signal_connect(page, "send-request", G_CALLBACK(sendRequest), map);
}

}  // namespace

extern "C" {

G_MODULE_EXPORT void webkit_web_process_extension_initialize_with_user_data(
    WebKitWebProcessExtension* extension, GVariant* userData) {
  // Lives as long as the process: pages may send requests until its end.
  static const auto map = std::make_unique<LibraryMap>(lumisk::desktop::storeFromVariant(userData));
  g_signal_connect(extension, "page-created", G_CALLBACK(pageCreated),
                   const_cast<LibraryMap*>(map.get()));
}
}
