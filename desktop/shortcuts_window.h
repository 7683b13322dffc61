#pragma once

#include <gtk/gtk.h>

namespace lumisk::desktop {

/// Shows all keys of the panel in a window of their own.
void showShortcutsWindow(GtkWindow* parent);

}  // namespace lumisk::desktop
