#pragma once

#include <gdk/gdk.h>

#include <vector>

namespace lumisk::desktop {

/// A pressed key as a layout reads it.
struct KeyReading {
  guint key = 0;  ///< letters in lower case, keys of the number pad as their namesakes
  /// Shift, Control, Alt and Super. Shift is left out where it only types the sign: "+" on one
  /// keyboard, "0" on another.
  GdkModifierType modifiers = GdkModifierType(0);
};

/// What the key press can be meant as, the likeliest first. A layout without Latin letters, such as
/// Russian or Hebrew, leaves Control and a letter unsaid: there the key also counts as what it is
/// in the person's other layouts. Where the layout has Latin letters it does not, or Control+A on a
/// French keyboard would be the Control+Q of an English one.
std::vector<KeyReading> keyReadings(GdkEvent* event);

/// The keys of the number pad mean the same as their namesakes.
guint withoutKeypad(guint key);

}  // namespace lumisk::desktop
