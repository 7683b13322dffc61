#pragma once

#include <gtk/gtk.h>

#include <string>

namespace lumisk::desktop {

/// Writes what `widget`, which is on screen, shows at the moment as a PNG file. False when there is
/// nothing to draw or the file cannot be written.
bool writePicture(GtkWidget* widget, const std::string& path);

}  // namespace lumisk::desktop
