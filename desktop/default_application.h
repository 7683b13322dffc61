#pragma once

#include <gtk/gtk.h>

#include <string>

#include "core/file_url.h"
#include "desktop/gref.h"

namespace lumisk::desktop {

/// The application that the person's desktop opens items of this content type with; the next one
/// when that is this program, and none when there is no other.
GRef<GAppInfo> defaultApplication(const std::string& contentType);

/// False when it could not be started.
bool openWith(GAppInfo* application, const FileURL& url, GdkDisplay* display);

}  // namespace lumisk::desktop
