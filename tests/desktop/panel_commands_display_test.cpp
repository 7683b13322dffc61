// Which commands there are for what is shown, and what does not outlast it.

#include <gtest/gtest.h>

#include "panel_on_screen.h"

namespace lumisk::test {
namespace {

using desktop::Command;

/// Items in the menu that cannot be chosen, by their texts, in their order.
std::vector<std::string> greyedItems(PanelOnScreen& panel) {
  const auto isMenu = [](GtkWidget* w) { return GTK_IS_MENU_BUTTON(w) == TRUE; };
  auto* const menu = GTK_MENU_BUTTON(shownBelow(panel.root(), isMenu).at(0));
  gtk_menu_button_popup(menu);
  GtkWidget* const popover = GTK_WIDGET(gtk_menu_button_get_popover(menu));
  EXPECT_TRUE(runUntil([&] { return gtk_widget_get_mapped(popover) == TRUE; }));
  std::vector<std::string> greyed;
  forEachShown(popover, [&](GtkWidget* widget) {
    if (std::string(G_OBJECT_TYPE_NAME(widget)) != "GtkModelButton") return;
    if (gtk_widget_get_sensitive(widget) == TRUE) return;
    char* text = nullptr;
    g_object_get(widget, "text", &text, nullptr);
    greyed.emplace_back(text);
    g_free(text);
  });
  gtk_menu_button_popdown(menu);
  EXPECT_TRUE(runUntil([&] { return gtk_widget_get_mapped(popover) == FALSE; }));
  return greyed;
}

TEST(PanelCommands, WhatCanDoNothingIsGreyed) {
  const ItemsToShow items;
  PanelOnScreen panel;
  std::vector<std::string> ofATextAlone;
  for (const Command command :
       {Command::Find, Command::Print, Command::ZoomIn, Command::ZoomOut, Command::ZoomReset})
    ofATextAlone.emplace_back(desktop::tr(desktop::rowOf(command).title));
  for (const char* const name : ItemsToShow::kNames) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(panel.open(items / name));
    const bool isText = panel->webViews().latestView() != nullptr;
    EXPECT_EQ(greyedItems(panel), isText ? std::vector<std::string>() : ofATextAlone);
  }
}

TEST(PanelCommands, WhereThereIsNoTextTheFindBarStaysShut) {
  const ItemsToShow items;
  PanelOnScreen panel;
  for (const char* const name : {"folder", "empty", "picture.png", "missing"})
    for (const Command command : {Command::Find, Command::FindNext, Command::FindPrevious}) {
      SCOPED_TRACE(name);
      ASSERT_TRUE(panel.open(items / name));
      panel->perform(command);
      EXPECT_FALSE(panel->findBar().isOpen());
    }
}

TEST(PanelCommands, TheEndOfALongTextIsItsVeryEnd) {
  const ItemsToShow items;
  PanelOnScreen panel;
  std::string text;
  while (text.size() < 400'000) text += "int value = 1;\n";
  writeAll(items / "long.cpp", text + "int last = 2;");
  ASSERT_TRUE(panel.open(items / "long.cpp"));
  panel->perform(Command::ToEnd);
  const auto isAtEnd = [&] {
    return evaluate(panel->webViews().latestView(),
                    "document.querySelector('pre > code').textContent.endsWith('last = 2;') && "
                    "scrollY + innerHeight >= document.documentElement.scrollHeight - 1");
  };
  EXPECT_TRUE(runUntil([&] { return isAtEnd() == "true"; }));
}

TEST(PanelCommands, TheWholeScreenIsForOneItem) {
  const ItemsToShow items;
  PanelOnScreen panel;
  const auto fills = [&] { return gtk_window_is_fullscreen(panel.window()) == TRUE; };
  ASSERT_TRUE(panel.open(items / "guide.md"));
  panel->perform(Command::FullScreen);
  ASSERT_TRUE(runUntil(fills));
  ASSERT_TRUE(panel.open(items / "data.json")) << "who walks on stays there";
  EXPECT_TRUE(fills());
  panel->close();
  ASSERT_TRUE(panel.open(items / "guide.md"));
  EXPECT_TRUE(runUntil([&] { return !fills(); }));
  EXPECT_LT(gtk_widget_get_width(panel.root()), 1600) << "the size of before";
}

}  // namespace
}  // namespace lumisk::test
