#include "desktop/key_reading.h"

#include <algorithm>
#include <optional>

namespace lumisk::desktop {
namespace {

constexpr guint kModifiers = GDK_SHIFT_MASK | GDK_CONTROL_MASK | GDK_ALT_MASK | GDK_SUPER_MASK;

struct Translation {
  guint key = 0;
  guint consumed = 0;  ///< the modifiers that took part in finding the key
};

std::optional<Translation> translated(GdkEvent* event, guint state, int layout) {
  Translation result;
  GdkModifierType consumed{};
  if (gdk_display_translate_key(gdk_event_get_display(event), gdk_key_event_get_keycode(event),
                                GdkModifierType(state & ~guint{GDK_LOCK_MASK}), layout, &result.key,
                                nullptr, nullptr, &consumed) == FALSE)
    return std::nullopt;
  result.key = withoutKeypad(result.key);
  result.consumed = consumed;
  return result;
}

bool isLatinLetter(guint key) { return key >= GDK_KEY_a && key <= GDK_KEY_z; }

std::optional<KeyReading> readingIn(GdkEvent* event, int layout) {
  const guint state = gdk_event_get_modifier_state(event);
  const auto pressed = translated(event, state, layout);
  if (!pressed) return std::nullopt;
  guint held = state & kModifiers;
  const bool isShifted = (held & pressed->consumed & GDK_SHIFT_MASK) != 0;
  // Some layouts have the Latin capitals where others have those of their own letters.
  if (isShifted && !isLatinLetter(pressed->key)) {
    const auto plain = translated(event, state & ~guint{GDK_SHIFT_MASK}, layout);
    if (plain && plain->key != pressed->key) held &= ~guint{GDK_SHIFT_MASK};
  }
  return KeyReading{pressed->key, GdkModifierType(held)};
}

std::vector<int> layoutsWithLatinLetters(GdkDisplay* display) {
  std::vector<int> layouts;
  GdkKeymapKey* keys = nullptr;
  int count = 0;
  if (gdk_display_map_keyval(display, GDK_KEY_a, &keys, &count) == FALSE) return layouts;
  for (int i = 0; i < count; ++i) layouts.push_back(keys[i].group);
  g_free(keys);
  return layouts;
}

}  // namespace

guint withoutKeypad(guint key) {
  switch (key) {
    case GDK_KEY_KP_Enter:
    case GDK_KEY_ISO_Enter:
      return GDK_KEY_Return;
    case GDK_KEY_KP_Add:
      return GDK_KEY_plus;
    case GDK_KEY_KP_Subtract:
      return GDK_KEY_minus;
    case GDK_KEY_KP_0:
    case GDK_KEY_KP_Insert:
      return GDK_KEY_0;
    case GDK_KEY_KP_Page_Up:
      return GDK_KEY_Page_Up;
    case GDK_KEY_KP_Page_Down:
      return GDK_KEY_Page_Down;
    case GDK_KEY_KP_Home:
      return GDK_KEY_Home;
    case GDK_KEY_KP_End:
      return GDK_KEY_End;
    case GDK_KEY_KP_Up:
      return GDK_KEY_Up;
    case GDK_KEY_KP_Down:
      return GDK_KEY_Down;
    case GDK_KEY_KP_Left:
      return GDK_KEY_Left;
    case GDK_KEY_KP_Right:
      return GDK_KEY_Right;
    default:
      return gdk_keyval_to_lower(key);
  }
}

std::vector<KeyReading> keyReadings(GdkEvent* event) {
  std::vector<KeyReading> readings;
  const int active = static_cast<int>(gdk_key_event_get_layout(event));
  const auto add = [&](int layout) {
    if (const auto reading = readingIn(event, layout)) readings.push_back(*reading);
  };
  add(active);
  const std::vector<int> latin = layoutsWithLatinLetters(gdk_event_get_display(event));
  if (std::find(latin.begin(), latin.end(), active) != latin.end()) return readings;
  for (const int layout : latin) add(layout);
  return readings;
}

}  // namespace lumisk::desktop
