#pragma once

#include <gtk/gtk.h>

namespace lumisk::desktop {

/// The window that lists the panel's keys, while it is open.
class ShortcutsWindow {
 public:
  ShortcutsWindow() = default;
  ShortcutsWindow(const ShortcutsWindow&) = delete;
  ShortcutsWindow& operator=(const ShortcutsWindow&) = delete;
  ~ShortcutsWindow() { close(); }

  void show(GtkWindow* parent);
  void close();

 private:
  gpointer* weakPointer() { return reinterpret_cast<gpointer*>(&window_); }

  GtkWindow* window_ = nullptr;  // the toolkit holds it until it is closed
};

}  // namespace lumisk::desktop
