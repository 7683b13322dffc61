#include "desktop/commands.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "desktop/document_control.h"

namespace lumisk::desktop {
namespace {

using enum Command;

constexpr guint kShift = GDK_SHIFT_MASK;
constexpr guint kControl = GDK_CONTROL_MASK;
constexpr guint kAlt = GDK_ALT_MASK;

struct Row {
  const char* label;
  guint key;
  guint modifiers;
  std::optional<Command> command;
};

constexpr Row kKeys[] = {
    {"Space", GDK_KEY_space, 0, Close},
    {"Escape", GDK_KEY_Escape, 0, Close},
    {"Control+W", GDK_KEY_w, kControl, Close},
    {"Control+Q", GDK_KEY_q, kControl, Quit},
    {"Return", GDK_KEY_Return, 0, OpenWithDefault},
    {"Control+O", GDK_KEY_o, kControl, OpenWithDefault},
    {"Control+?", GDK_KEY_question, kControl, ShowShortcuts},
    {"Control+F", GDK_KEY_f, kControl, Find},
    {"F3", GDK_KEY_F3, 0, FindNext},
    {"Control+G", GDK_KEY_g, kControl, FindNext},
    {"Shift+F3", GDK_KEY_F3, kShift, FindPrevious},
    {"Shift+Control+G", GDK_KEY_g, kShift | kControl, FindPrevious},
    {"Control+C", GDK_KEY_c, kControl, Copy},
    {"Control+P", GDK_KEY_p, kControl, Print},
    {"Alt+Left", GDK_KEY_Left, kAlt, GoBack},
    {"Control++", GDK_KEY_plus, kControl, ZoomIn},
    {"Control+=", GDK_KEY_equal, kControl, ZoomIn},
    {"Control+-", GDK_KEY_minus, kControl, ZoomOut},
    {"Control+0", GDK_KEY_0, kControl, ZoomReset},
    {"F5", GDK_KEY_F5, 0, Reload},
    {"F11", GDK_KEY_F11, 0, FullScreen},
    {"Page Up", GDK_KEY_Page_Up, 0, PageUp},
    {"Page Down", GDK_KEY_Page_Down, 0, PageDown},
    {"Home", GDK_KEY_Home, 0, ToStart},
    {"End", GDK_KEY_End, 0, ToEnd},
    {"Shift+Up", GDK_KEY_Up, kShift, LineUp},
    {"Shift+Down", GDK_KEY_Down, kShift, LineDown},
    {"Shift+Left", GDK_KEY_Left, kShift, LineLeft},
    {"Shift+Right", GDK_KEY_Right, kShift, LineRight},
};

constexpr Row kOthers[] = {
    {"a letter", GDK_KEY_w, 0, {}},
    {"an arrow", GDK_KEY_Up, 0, {}},
    {"Left with Control", GDK_KEY_Left, kControl, {}},
    {"Space with Control", GDK_KEY_space, kControl, {}},
    {"Q with Alt too", GDK_KEY_q, kControl | kAlt, {}},
    {"select all", GDK_KEY_a, kControl, {}},
    {"Escape with Super", GDK_KEY_Escape, GDK_SUPER_MASK, {}},
};

std::optional<Command> commandOfRow(const Row& row) {
  return commandOf({row.key, GdkModifierType(row.modifiers)});
}

TEST(Commands, EachKeyHasItsOwn) {
  for (const Row& row : kKeys) EXPECT_EQ(commandOfRow(row), row.command) << row.label;
}

TEST(Commands, OtherKeysHaveNone) {
  for (const Row& row : kOthers) EXPECT_EQ(commandOfRow(row), row.command) << row.label;
}

TEST(Commands, EachHasAKey) {
  std::set<Command> reached;
  for (const Row& row : kKeys) reached.insert(*row.command);
  for (const CommandRow& row : commandRows())
    EXPECT_TRUE(reached.contains(row.command)) << row.action;
}

TEST(Commands, WhileTypingOnlyKeysThatNoFieldTakesAreMeant) {
  const std::set<std::string> meant = {
      "Escape",    "Control+W", "Control+Q", "Control+O", "Control+?",
      "Control+F", "F3",        "Control+G", "Shift+F3",  "Control+P",
      "Alt+Left",  "Control++", "Control+=", "Control+-", "Control+0",
      "F5",        "F11",       "Page Up",   "Page Down", "Shift+Control+G",
  };
  for (const Row& row : kKeys) {
    const KeyReading reading{row.key, GdkModifierType(row.modifiers)};
    EXPECT_EQ(isMeantWhileTyping(*row.command, reading), meant.contains(row.label)) << row.label;
  }
}

TEST(KeyReading, TheNumberPadIsReadAsItsNamesakes) {
  constexpr guint kPairs[][2] = {
      {GDK_KEY_KP_Enter, GDK_KEY_Return},   {GDK_KEY_KP_Add, GDK_KEY_plus},
      {GDK_KEY_KP_Subtract, GDK_KEY_minus}, {GDK_KEY_KP_0, GDK_KEY_0},
      {GDK_KEY_KP_Insert, GDK_KEY_0},       {GDK_KEY_KP_Page_Up, GDK_KEY_Page_Up},
      {GDK_KEY_KP_Home, GDK_KEY_Home},      {GDK_KEY_KP_Page_Down, GDK_KEY_Page_Down},
      {GDK_KEY_KP_End, GDK_KEY_End},        {GDK_KEY_KP_Up, GDK_KEY_Up},
      {GDK_KEY_KP_Down, GDK_KEY_Down},      {GDK_KEY_KP_Left, GDK_KEY_Left},
      {GDK_KEY_KP_Right, GDK_KEY_Right},    {GDK_KEY_G, GDK_KEY_g},
  };
  for (const auto& [pressed, read] : kPairs)
    EXPECT_EQ(withoutKeypad(pressed), read) << gdk_keyval_name(pressed);
}

TEST(ZoomFactor, ANotchOfTheWheelIsAStep) {
  EXPECT_DOUBLE_EQ(zoomFactor(-1, GDK_SCROLL_UNIT_WHEEL), 1.1);
  EXPECT_DOUBLE_EQ(zoomFactor(1, GDK_SCROLL_UNIT_WHEEL), 1 / 1.1);
}

TEST(ZoomFactor, NoTurnChangesNothing) {
  EXPECT_EQ(zoomFactor(0, GDK_SCROLL_UNIT_WHEEL), 1);
  EXPECT_EQ(zoomFactor(0, GDK_SCROLL_UNIT_SURFACE), 1);
}

TEST(ZoomFactor, SmallTurnsComeToWhatOneLargeTurnDoes) {
  double zoom = 1;
  for (int i = 0; i < 100; ++i) zoom *= zoomFactor(-0.01, GDK_SCROLL_UNIT_WHEEL);
  EXPECT_NEAR(zoom, 1.1, 1e-9);
}

TEST(ZoomFactor, AFingersWayIsMeasuredInPixels) {
  // A swipe over a touchpad's height is a few hundred pixels.
  const double swipe = zoomFactor(-300, GDK_SCROLL_UNIT_SURFACE);
  EXPECT_GT(swipe, 1.5);
  EXPECT_LT(swipe, 2.5);
}

}  // namespace
}  // namespace lumisk::desktop
