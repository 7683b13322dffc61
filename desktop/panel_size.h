#pragma once

#include <gtk/gtk.h>

#include "core/file_url.h"

namespace lumisk::desktop {

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;
};

/// What the panel shows, as far as its size depends on it.
enum class ContentShape { Document, Table, Folder, Message };

ContentShape shapeOf(const FileURL& url, bool isFolder);
/// The size that suits the content and leaves the desktop to be seen: at most 80 % of the part of
/// the monitor that windows may cover.
Size initialSize(ContentShape shape, Size workArea);
/// Of the monitor that `window` is or will be on.
Size workAreaFor(GtkWidget* window);

}  // namespace lumisk::desktop
