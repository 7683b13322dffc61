#pragma once

#include <gtk/gtk.h>

namespace lumisk::desktop {

/// How much larger than usual the person has texts on the screen of `widget`.
double textScale(GtkWidget* widget);

}  // namespace lumisk::desktop
