#pragma once

#include <gtk/gtk.h>

#include <string>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// What `widget`, which is on screen, shows at the moment; null when it shows nothing, or waits to
/// be laid out.
GRef<GdkTexture> pictureOf(GtkWidget* widget);

/// Writes a PNG file.
bool writePicture(GdkTexture* picture, const std::string& path);

/// Whether all pixels are alike, as on a page of which nothing has been drawn.
bool isBlank(GdkTexture* picture);

}  // namespace lumisk::desktop
