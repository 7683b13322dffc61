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

}  // namespace

std::span<const CommandRow> commandRows() { return kRows; }

const CommandRow& rowOf(Command command) {
  return *std::find_if(kRows.begin(), kRows.end(),
                       [&](const CommandRow& row) { return row.command == command; });
}

std::optional<Command> commandOf(const KeyReading& reading) {
  static const std::vector<KeyRow> keys = parseKeys();
  for (const KeyRow& row : keys)
    if (row.key == reading.key && row.modifiers == reading.modifiers) return row.command;
  return std::nullopt;
}

bool isMeantWhileTyping(Command command, const KeyReading& reading) {
  if (reading.key == GDK_KEY_Escape) return true;  // a way out that no page can block
  const bool isFunctionKey = reading.key >= GDK_KEY_F1 && reading.key <= GDK_KEY_F12;
  const bool scrolls = command == PageUp || command == PageDown;
  const bool isWithControl = (reading.modifiers & (GDK_CONTROL_MASK | GDK_ALT_MASK)) != 0;
  return isFunctionKey || scrolls || (isWithControl && command != Copy);
}

}  // namespace lumisk::desktop
