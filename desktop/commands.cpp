#include "desktop/commands.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace lumisk::desktop {
namespace {

using enum Command;
using enum CommandGroup;

constexpr std::array kRows = {
    CommandRow{Close, General, "close", "command.close", "space Escape <Control>w"},
    CommandRow{Quit, General, "quit", "command.quit", "<Control>q"},
    CommandRow{OpenWithDefault, General, "open", "command.open", "Return <Control>o"},
    CommandRow{ShowShortcuts, General, "shortcuts", "command.shortcuts", "<Control>question"},
    CommandRow{Find, Document, "find", "command.find", "<Control>f"},
    CommandRow{FindNext, Document, "find-next", "command.find-next", "F3 <Control>g"},
    CommandRow{FindPrevious, Document, "find-previous", "command.find-previous",
               "<Shift>F3 <Shift><Control>g"},
    CommandRow{Copy, Document, "copy", "command.copy", "<Control>c"},
    CommandRow{Print, Document, "print", "command.print", "<Control>p"},
    CommandRow{GoBack, Document, "back", "command.back", "<Alt>Left"},
    CommandRow{ZoomIn, View, "zoom-in", "command.zoom-in", "<Control>plus <Control>equal"},
    CommandRow{ZoomOut, View, "zoom-out", "command.zoom-out", "<Control>minus"},
    CommandRow{ZoomReset, View, "zoom-reset", "command.zoom-reset", "<Control>0"},
    CommandRow{Reload, View, "reload", "command.reload", "F5"},
    CommandRow{FullScreen, View, "full-screen", "command.full-screen", "F11"},
    CommandRow{PageUp, Scrolling, "page-up", "command.page-up", "Page_Up"},
    CommandRow{PageDown, Scrolling, "page-down", "command.page-down", "Page_Down"},
    CommandRow{ToStart, Scrolling, "to-start", "command.to-start", "Home"},
    CommandRow{ToEnd, Scrolling, "to-end", "command.to-end", "End"},
    CommandRow{LineUp, Scrolling, "line-up", "command.line-up", "<Shift>Up"},
    CommandRow{LineDown, Scrolling, "line-down", "command.line-down", "<Shift>Down"},
    CommandRow{LineLeft, Scrolling, "line-left", "command.line-left", "<Shift>Left"},
    CommandRow{LineRight, Scrolling, "line-right", "command.line-right", "<Shift>Right"},
};

struct KeyRow {
  guint key;
  GdkModifierType modifiers;
  Command command;
};

std::vector<KeyRow> parseKeys() {
  std::vector<KeyRow> keys;
  for (const CommandRow& row : kRows) {
    char** accelerators = g_strsplit(row.accelerators, " ", -1);
    for (char** text = accelerators; *text != nullptr; ++text) {
      KeyRow key{0, GdkModifierType(0), row.command};
      if (gtk_accelerator_parse(*text, &key.key, &key.modifiers) == TRUE) keys.push_back(key);
    }
    g_strfreev(accelerators);
  }
  return keys;
}

/// The keys of the number pad mean the same as their namesakes.
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
    default:
      return gdk_keyval_to_lower(key);
  }
}

constexpr guint kModifiers = GDK_SHIFT_MASK | GDK_CONTROL_MASK | GDK_ALT_MASK | GDK_SUPER_MASK;

/// Whether shift is part of how the sign is typed ("+" and "?") and says nothing more.
bool isTypedWithShift(guint key) { return key == GDK_KEY_plus || key == GDK_KEY_question; }

}  // namespace

std::span<const CommandRow> commandRows() { return kRows; }

const CommandRow& rowOf(Command command) {
  return *std::find_if(kRows.begin(), kRows.end(),
                       [&](const CommandRow& row) { return row.command == command; });
}

std::optional<Command> commandOfKey(guint key, GdkModifierType modifiers) {
  static const std::vector<KeyRow> keys = parseKeys();
  const guint plain = withoutKeypad(key);
  guint held = modifiers & kModifiers;
  if (isTypedWithShift(plain)) held &= ~guint{GDK_SHIFT_MASK};
  for (const KeyRow& row : keys)
    if (row.key == plain && static_cast<guint>(row.modifiers) == held) return row.command;
  return std::nullopt;
}

bool isMeantWhileTyping(Command command, guint key, GdkModifierType modifiers) {
  const bool isFunctionKey = key >= GDK_KEY_F1 && key <= GDK_KEY_F12;
  const bool scrolls = command == PageUp || command == PageDown;
  const bool isWithControl = (modifiers & (GDK_CONTROL_MASK | GDK_ALT_MASK)) != 0;
  return isFunctionKey || scrolls || (isWithControl && command != Copy);
}

}  // namespace lumisk::desktop
