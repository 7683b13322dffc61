#pragma once

#include <gtk/gtk.h>

#include "ui/modifier.h"

// A widget around one other, for the modifiers of a view that no widget of the toolkit's offers: a
// frame of an exact size with its child aligned in it, padding, an ideal size that is kept.

namespace lumisk::desktop {

/// Whether something takes all the room it can get.
struct Flexibility {
  bool horizontal = false;
  bool vertical = false;
  bool operator==(const Flexibility&) const = default;
};

/// A new box around `child`, floating like every new widget.
GtkWidget* frameBoxNew(GtkWidget* child, Flexibility childFlexibility);

void frameBoxSetPadding(GtkWidget* box, const ui::Padding& padding);
void frameBoxSetFrame(GtkWidget* box, const ui::Frame& frame);
void frameBoxSetFixedSize(GtkWidget* box);

ui::Padding frameBoxPadding(GtkWidget* box);
ui::Frame frameBoxFrame(GtkWidget* box);

}  // namespace lumisk::desktop
