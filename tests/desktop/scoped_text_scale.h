#pragma once

#include <gtk/gtk.h>

#include "screen.h"

namespace lumisk::test {

/// The person's text scaling for as long as this lives.
class ScopedTextScale {
 public:
  explicit ScopedTextScale(double scale) { set(scale); }
  ScopedTextScale(const ScopedTextScale&) = delete;
  ScopedTextScale& operator=(const ScopedTextScale&) = delete;
  ~ScopedTextScale() { set(1); }

  static void set(double scale) {
    constexpr int kUsualResolution = 96 * 1024;  // 1024ths of dots per inch
    g_object_set(gtk_settings_get_default(), "gtk-xft-dpi",
                 static_cast<int>(kUsualResolution * scale), nullptr);
    runFor(300);
  }
};

}  // namespace lumisk::test
