#pragma once

#include "desktop/presentation.h"

namespace lumisk::desktop {

// What the panel's keys do to the document that is shown.

enum class ScrollStep { LineUp, LineDown, LineLeft, LineRight, PageUp, PageDown, ToStart, ToEnd };

void scroll(const ShownDocument& shown, ScrollStep step);
void copySelection(const ShownDocument& shown);
/// Shows every page and text below `root` at `zoom`, 1 being their own size.
void setZoom(GtkWidget* root, double zoom);
/// Lets the person print the page below `root`; false when there is none.
bool print(GtkWidget* root, GtkWindow* parent);

}  // namespace lumisk::desktop
