#pragma once

#include <gtk/gtk.h>

namespace lumisk::desktop {

/// What a screen reader calls the widget. The toolkit does not take a button's icon or tooltip for
/// its name.
inline void setAccessibleName(GtkWidget* widget, const char* name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL, name, -1);
}

/// For buttons that show an icon, or a text that may be cut.
inline void setTooltipAndName(GtkWidget* widget, const char* text) {
  gtk_widget_set_tooltip_text(widget, text);
  setAccessibleName(widget, text);
}

}  // namespace lumisk::desktop
