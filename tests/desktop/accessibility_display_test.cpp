// What a screen reader finds: every control has a role and a name that says what it does.

#include <gtest/gtest.h>

#include "desktop/accessible_name.h"
#include "panel_on_screen.h"

namespace lumisk::test {
namespace {

using desktop::Command;

std::string nameOf(GtkWidget* widget) { return desktop::accessibleName(widget); }

bool hasRole(GtkWidget* widget, GtkAccessibleRole role) {
  return gtk_test_accessible_has_role(GTK_ACCESSIBLE(widget), role) == TRUE;
}

/// Whether a person acts on the widget itself.
bool isControl(GtkWidget* widget) {
  return GTK_IS_BUTTON(widget) || GTK_IS_MENU_BUTTON(widget) || GTK_IS_SEARCH_ENTRY(widget) ||
         GTK_IS_LIST_VIEW(widget) || GTK_IS_TEXT_VIEW(widget) || WEBKIT_IS_WEB_VIEW(widget) ||
         GTK_IS_SPINNER(widget);
}

std::string described(GtkWidget* widget) {
  char** const classes = gtk_widget_get_css_classes(widget);
  char* const joined = g_strjoinv(" ", classes);
  const std::string text = std::string(G_OBJECT_TYPE_NAME(widget)) + " (" + joined + ")";
  g_free(joined);
  g_strfreev(classes);
  return text;
}

void expectNames(GtkWidget* root) {
  for (GtkWidget* const widget : shownBelow(root, isControl)) {
    EXPECT_NE(nameOf(widget), "") << described(widget);
    EXPECT_FALSE(hasRole(widget, GTK_ACCESSIBLE_ROLE_NONE)) << described(widget);
  }
}

TEST(Accessibility, EveryControlHasANameAndARole) {
  const ItemsToShow items;
  PanelOnScreen panel;
  for (const char* const name : ItemsToShow::kNames) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(panel.open(items / name));
    expectNames(panel.root());
  }
}

TEST(Accessibility, AlsoInTheFindBarTheSourceAndWhereALinkLed) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "guide.md"));
  panel->perform(Command::Find);
  runFor(400);
  expectNames(panel.root());
  ASSERT_TRUE(panel->presentation()->selectMode("source"));
  runFor(100);
  expectNames(panel.root());
  ASSERT_TRUE(panel->presentation()->selectMode("rendered"));
  ASSERT_TRUE(panel.followLink());
  expectNames(panel.root());
}

TEST(Accessibility, WhatTakesNoFocusIsReadOutWhenItComes) {
  const ItemsToShow items;
  PanelOnScreen panel;
  for (const char* const name : {"missing", "picture.png"}) {
    ASSERT_TRUE(panel.open(items / name));
    const auto alerts = shownBelow(panel->content(), [](GtkWidget* widget) {
      return hasRole(widget, GTK_ACCESSIBLE_ROLE_ALERT);
    });
    ASSERT_EQ(alerts.size(), 1U) << name;
    EXPECT_GE(shownBelow(alerts[0], [](GtkWidget* w) { return GTK_IS_LABEL(w) == TRUE; }).size(),
              2U);
  }
  ASSERT_TRUE(panel.open(items / "guide.md"));
  panel->perform(Command::Find);
  runFor(400);
  const auto counts = shownBelow(panel.root(), [](GtkWidget* widget) {
    return gtk_widget_has_css_class(widget, "find-count") == TRUE;
  });
  ASSERT_EQ(counts.size(), 1U);
  EXPECT_TRUE(hasRole(counts[0], GTK_ACCESSIBLE_ROLE_STATUS));
}

/// Whether the widget, or one that it is in, says that it is hidden.
bool isHidden(GtkWidget* widget) {
  for (; widget != nullptr; widget = gtk_widget_get_parent(widget)) {
    auto* accessible = GTK_ACCESSIBLE(widget);
    if (gtk_test_accessible_has_state(accessible, GTK_ACCESSIBLE_STATE_HIDDEN) == FALSE) continue;
    char* const other =
        gtk_test_accessible_check_state(accessible, GTK_ACCESSIBLE_STATE_HIDDEN, TRUE);
    g_free(other);
    if (other == nullptr) return true;
  }
  return false;
}

TEST(Accessibility, OfTheModesOfADocumentOneIsThere) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "guide.md"));
  GtkWidget* const page = GTK_WIDGET(panel->webViews().latestView());
  EXPECT_FALSE(isHidden(page));
  ASSERT_TRUE(panel->presentation()->selectMode("source"));
  GtkWidget* const source = GTK_WIDGET(desktop::findShownDocument(panel->content()).text);
  EXPECT_TRUE(isHidden(page));
  EXPECT_FALSE(isHidden(source));
  ASSERT_TRUE(panel->presentation()->selectMode("rendered"));
  EXPECT_FALSE(isHidden(page));
  EXPECT_TRUE(isHidden(source));
}

TEST(Accessibility, TheModesAreAGroupOfRadioButtons) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "data.json"));
  const auto groups = shownBelow(panel.root(), [](GtkWidget* widget) {
    return hasRole(widget, GTK_ACCESSIBLE_ROLE_RADIO_GROUP);
  });
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(nameOf(groups[0]), "View");
  const auto buttons = shownBelow(
      groups[0], [](GtkWidget* widget) { return hasRole(widget, GTK_ACCESSIBLE_ROLE_RADIO); });
  ASSERT_EQ(buttons.size(), 2U);
  EXPECT_EQ(nameOf(buttons[0]), "Formatted");
  EXPECT_EQ(nameOf(buttons[1]), "Raw Text");
  const auto isChecked = [](GtkWidget* button) {
    char* const other = gtk_test_accessible_check_state(
        GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_STATE_CHECKED, GTK_ACCESSIBLE_TRISTATE_TRUE);
    g_free(other);
    return other == nullptr;
  };
  EXPECT_TRUE(isChecked(buttons[0]));
  EXPECT_FALSE(isChecked(buttons[1]));
  ASSERT_TRUE(panel->presentation()->selectMode("text"));
  EXPECT_FALSE(isChecked(buttons[0]));
  EXPECT_TRUE(isChecked(buttons[1]));
}

TEST(Accessibility, ARowSaysItsNameItsSizeAndItsDate) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "folder"));
  const auto lists = shownBelow(panel.root(), [](GtkWidget* w) { return GTK_IS_LIST_VIEW(w); });
  ASSERT_EQ(lists.size(), 1U);
  EXPECT_TRUE(hasRole(lists[0], GTK_ACCESSIBLE_ROLE_LIST));
  const auto rows = shownBelow(
      lists[0], [](GtkWidget* widget) { return hasRole(widget, GTK_ACCESSIBLE_ROLE_LIST_ITEM); });
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_TRUE(nameOf(rows[0]).starts_with("inner, —, ")) << nameOf(rows[0]);
  EXPECT_TRUE(nameOf(rows[1]).starts_with("a note.txt, 1 B, ")) << nameOf(rows[1]);
}

TEST(Accessibility, IconsBesideNamesArePassedBy) {
  const ItemsToShow items;
  PanelOnScreen panel;
  for (const char* const name : {"folder", "picture.png"}) {
    ASSERT_TRUE(panel.open(items / name));
    for (GtkWidget* const image : shownBelow(
             panel->content(), [](GtkWidget* widget) { return GTK_IS_IMAGE(widget) == TRUE; }))
      EXPECT_TRUE(hasRole(image, GTK_ACCESSIBLE_ROLE_PRESENTATION));
  }
}

}  // namespace
}  // namespace lumisk::test
