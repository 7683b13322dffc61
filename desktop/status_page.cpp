#include "desktop/status_page.h"

#include <adwaita.h>

namespace lumisk::desktop {
namespace {

constexpr int kIconSize = 128;
constexpr int kSpacing = 12;
constexpr int kMargin = 36;
constexpr int kWidestText = 480;

GtkWidget* newLabel(const std::string& text, const char* style) {
  GtkWidget* label = gtk_label_new(text.c_str());
  gtk_label_set_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_justify(GTK_LABEL(label), GTK_JUSTIFY_CENTER);
  gtk_label_set_selectable(GTK_LABEL(label), FALSE);
  if (style != nullptr) gtk_widget_add_css_class(label, style);
  return label;
}

std::string lines(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : "\n") + text;
  return result;
}

}  // namespace

GtkWidget* statusPageNew(const StatusText& text, GtkWidget* button) {
  // Nothing on the page takes the focus, so it is read out when it appears.
  GtkWidget* box =
      GTK_WIDGET(g_object_new(GTK_TYPE_BOX, "orientation", GTK_ORIENTATION_VERTICAL, "spacing",
                              kSpacing, "accessible-role", GTK_ACCESSIBLE_ROLE_ALERT, nullptr));
  gtk_widget_set_valign(box, GTK_ALIGN_CENTER);
  for (const auto setMargin : {gtk_widget_set_margin_top, gtk_widget_set_margin_bottom,
                               gtk_widget_set_margin_start, gtk_widget_set_margin_end})
    setMargin(box, kMargin);

  GtkWidget* icon = GTK_WIDGET(g_object_new(GTK_TYPE_IMAGE, "icon-name", text.iconName.c_str(),
                                            "pixel-size", kIconSize, "accessible-role",
                                            GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr));
  // A symbol of one colour would be the loudest thing in the window.
  const bool isSymbol = text.iconName.ends_with("-symbolic");
  gtk_widget_add_css_class(icon, isSymbol ? "dim-label" : "icon-dropshadow");
  gtk_box_append(GTK_BOX(box), icon);
  gtk_box_append(GTK_BOX(box), newLabel(text.title, "title-2"));
  gtk_box_append(GTK_BOX(box), newLabel(text.sentence, nullptr));
  if (!text.details.empty())
    gtk_box_append(GTK_BOX(box), newLabel(lines(text.details), "dim-label"));
  if (button != nullptr) {
    gtk_widget_set_halign(button, GTK_ALIGN_CENTER);
    gtk_widget_set_margin_top(button, kSpacing);
    gtk_box_append(GTK_BOX(box), button);
  }
  GtkWidget* clamp = adw_clamp_new();
  adw_clamp_set_maximum_size(ADW_CLAMP(clamp), kWidestText);
  adw_clamp_set_child(ADW_CLAMP(clamp), box);
  gtk_widget_set_vexpand(clamp, TRUE);
  return clamp;
}

}  // namespace lumisk::desktop
