#pragma once

#include <optional>
#include <span>

#include "desktop/key_reading.h"
#include "desktop/texts.h"

namespace lumisk::desktop {

/// What a person can tell the panel to do. One table gives each its keys, its place in the menu and
/// its line in the shortcuts window.
enum class Command {
  Close,
  Quit,
  OpenWithDefault,
  Find,
  FindNext,
  FindPrevious,
  Copy,
  ZoomIn,
  ZoomOut,
  ZoomReset,
  Print,
  Reload,
  FullScreen,
  GoBack,
  ShowShortcuts,
  LineUp,
  LineDown,
  LineLeft,
  LineRight,
  PageUp,
  PageDown,
  ToStart,
  ToEnd,
};

enum class CommandGroup { General, Document, View, Scrolling };

struct CommandRow {
  Command command;
  CommandGroup group;
  const char* action;  ///< its name as an action
  TextKey title;
  const char* accelerators;  ///< in the toolkit's notation, separated by blanks
};

std::span<const CommandRow> commandRows();
const CommandRow& rowOf(Command command);

/// What the key stands for.
std::optional<Command> commandOf(const KeyReading& reading);

/// Whether the key means `command` even where a text field would take it.
bool isMeantWhileTyping(Command command, const KeyReading& reading);

}  // namespace lumisk::desktop
