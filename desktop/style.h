#pragma once

#include <gtk/gtk.h>

#include <string>

#include "ui/modifier.h"

namespace lumisk::desktop {

/// Adds the program's style sheet to the display, once. Without it the classes mean nothing.
void installStyle(GdkDisplay* display);

/// Gives `widget` the background; it follows the desktop's colours by itself.
void setBackground(GtkWidget* widget, const ui::Background& background);

/// The background that `setBackground` gave.
ui::Background backgroundOf(GtkWidget* widget);

}  // namespace lumisk::desktop
