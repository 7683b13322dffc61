#include "desktop/waiting_wheel.h"

namespace lumisk::desktop {
namespace {

constexpr unsigned kMoment = 250;  // milliseconds

}  // namespace

void WaitingWheel::comeSoon() {
  if (wheel_) return;
  wheel_ = makeProgressIndicator();
  GtkWidget* const widget = wheel_->widget();
  gtk_widget_set_halign(widget, GTK_ALIGN_CENTER);
  gtk_widget_set_valign(widget, GTK_ALIGN_CENTER);
  gtk_widget_set_opacity(widget, 0);
  gtk_overlay_add_overlay(place_, widget);
  coming_.after(kMoment, [this] { gtk_widget_set_opacity(wheel_->widget(), 1); });
}

void WaitingWheel::go() {
  coming_.cancel();
  if (!wheel_) return;
  gtk_overlay_remove_overlay(place_, wheel_->widget());
  wheel_.reset();
}

bool holdsWheel(GtkWidget* widget) {
  if (gtk_widget_get_opacity(widget) <= 0) return false;
  if (GTK_IS_SPINNER(widget)) return true;
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    if (holdsWheel(child)) return true;
  return false;
}

}  // namespace lumisk::desktop
