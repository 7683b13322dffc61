#pragma once

#include <gtk/gtk.h>

#include <functional>

#include "desktop/commands.h"

namespace lumisk::desktop {

/// The panel's menu button. Its items are actions of the group "panel", which is added to `window`
/// and calls `perform`.
GtkWidget* menuButtonNew(GtkWidget* window, const std::function<void(Command)>& perform);

}  // namespace lumisk::desktop
