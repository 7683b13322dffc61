#pragma once

#include <gtk/gtk.h>

#include <string>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// What `widget`, which is on screen, shows at the moment; null when it shows nothing.
GRef<GdkTexture> pictureOf(GtkWidget* widget);

/// Writes what `widget` shows as a PNG file.
bool writePicture(GtkWidget* widget, const std::string& path);

/// Whether all pixels are alike, as on a page of which nothing has been drawn.
bool isBlank(GdkTexture* picture);

}  // namespace lumisk::desktop
