#include "desktop/parent_window.h"

#ifdef GDK_WINDOWING_WAYLAND
#include <gdk/wayland/gdkwayland.h>
#endif
#ifdef GDK_WINDOWING_X11
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/x11/gdkx.h>
#endif

namespace lumisk::desktop {

void setParentWindow(GtkWindow* window, const WindowHandle& parent) {
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
  if (surface == nullptr) return;
#ifdef GDK_WINDOWING_X11
  if (GDK_IS_X11_SURFACE(surface)) {
    GdkDisplay* display = gdk_surface_get_display(surface);
    Display* connection = gdk_x11_display_get_xdisplay(display);
    const Window own = gdk_x11_surface_get_xid(surface);
    // Written to our own window; that the other may be gone by now is the window manager's affair.
    if (parent.server == WindowHandle::Server::X11) {
      XSetTransientForHint(connection, own, parent.xid);
    } else {
      XDeleteProperty(connection, own,
                      gdk_x11_get_xatom_by_name_for_display(display, "WM_TRANSIENT_FOR"));
    }
  }
#endif
#ifdef GDK_WINDOWING_WAYLAND
  if (GDK_IS_WAYLAND_TOPLEVEL(surface)) {
    if (parent.server == WindowHandle::Server::Wayland) {
      gdk_wayland_toplevel_set_transient_for_exported(GDK_TOPLEVEL(surface),
                                                      parent.exported.c_str());
    } else {
      gdk_toplevel_set_transient_for(GDK_TOPLEVEL(surface), nullptr);
    }
  }
#endif
}

}  // namespace lumisk::desktop
