#pragma once

#include <gtk/gtk.h>

#include <string>

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

/// The name that the widget was given; empty when it has none.
inline std::string accessibleName(GtkWidget* widget) {
  auto* accessible = GTK_ACCESSIBLE(widget);
  if (gtk_test_accessible_has_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL) == FALSE)
    return {};
  // The toolkit answers with what the name is only when another is expected.
  char* name =
      gtk_test_accessible_check_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, "\x01 never");
  std::string text = name == nullptr ? "" : name;
  g_free(name);
  return text;
}

}  // namespace lumisk::desktop
