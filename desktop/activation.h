#pragma once

#include <gtk/gtk.h>

#include <string>

namespace lumisk::desktop {

/// Notes that a person asked for `window`, by the token of the program where they did; to be called
/// just before the window appears or is presented. Without one, and with one that no display server
/// can have made, nothing is noted.
void setActivationToken(GtkWindow* window, const std::string& token);

}  // namespace lumisk::desktop
