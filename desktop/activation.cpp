#include "desktop/activation.h"

#ifdef GDK_WINDOWING_WAYLAND
#include <gdk/wayland/gdkwayland.h>
#endif

namespace lumisk::desktop {
namespace {

/// Real ones are names of a program, a machine and a few numbers; what is much longer does not fit
/// into a request to the display server, which would end the program.
constexpr std::size_t kLongestToken = 1024;

}  // namespace

void setActivationToken(GtkWindow* window, const std::string& token) {
  if (token.empty() || token.size() > kLongestToken) return;
  gtk_window_set_startup_id(window, token.c_str());
#ifdef GDK_WINDOWING_WAYLAND
  // Before GTK 4.10 the window's own token does not reach the compositor; later ones say that it
  // does, and that this is deprecated.
  GdkDisplay* display = gtk_widget_get_display(GTK_WIDGET(window));
  if (GDK_IS_WAYLAND_DISPLAY(display)) {
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gdk_wayland_display_set_startup_notification_id(display, token.c_str());
    G_GNUC_END_IGNORE_DEPRECATIONS
  }
#endif
}

}  // namespace lumisk::desktop
