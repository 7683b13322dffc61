#pragma once

#include <gtk/gtk.h>

#include <string>
#include <vector>

namespace lumisk::desktop {

/// The calm page that stands where a preview cannot.
struct StatusText {
  std::string iconName;
  std::string title;
  std::string sentence;
  std::vector<std::string> details;
};

/// `button` (may be null) stands below the text.
GtkWidget* statusPageNew(const StatusText& text, GtkWidget* button);

}  // namespace lumisk::desktop
