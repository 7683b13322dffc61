#pragma once

#include <gtk/gtk.h>

#include "desktop/service/window_handle.h"

namespace lumisk::desktop {

/// Makes `window` (realized) belong to a window of another program, so that it stays above it and
/// is centred on it; with no window it belongs to nobody. A handle for another display server than
/// the one in use counts as none.
void setParentWindow(GtkWindow* window, const WindowHandle& parent);

}  // namespace lumisk::desktop
