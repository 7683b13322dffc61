#pragma once

#include "desktop/presentation.h"

namespace lumisk::desktop {

// What the panel's keys do to the document that is shown.

enum class ScrollStep { LineUp, LineDown, LineLeft, LineRight, PageUp, PageDown, ToStart, ToEnd };

void scroll(const ShownDocument& shown, ScrollStep step);
void copySelection(const ShownDocument& shown);
/// By how much a step of zooming makes a document larger.
inline constexpr double kZoomStep = 1.1;
/// By how much a turn of the wheel with Control held does: a step for each notch, and for the many
/// small turns that a touchpad reports as much as they come to together.
double zoomFactor(double turn, GdkScrollUnit unit);
/// Shows every page and text below `root` at `zoom`, 1 being their own size.
void setZoom(GtkWidget* root, double zoom);

}  // namespace lumisk::desktop
