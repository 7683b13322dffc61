// The panel's size on a screen that docks have left little of.

#include <gtest/gtest.h>

#include "panel_on_screen.h"
#include "x_desktop.h"

namespace lumisk::test {
namespace {

using desktop::Size;

constexpr Size kScreen{1600, 1200};

Size workArea(GtkWindow* window) { return desktop::workAreaFor(GTK_WIDGET(window)); }

TEST(WorkArea, OfAWindowThatIsNowhereYetIsTheFirstMonitors) {
  GtkWindow* const window = GTK_WINDOW(gtk_window_new());
  EXPECT_EQ(workArea(window), kScreen);
  gtk_window_destroy(window);
}

TEST(WorkArea, IsWhatDocksLeaveAndThePanelKeepsWithinIt) {
  const ItemsToShow items;
  XDesktop desktop;
  PanelOnScreen panel;
  gtk_widget_realize(panel.root());
  desktop.reserveTop(600);
  ASSERT_TRUE(runUntil([&] { return workArea(panel.window()) == Size{1600, 600}; }));
  ASSERT_TRUE(panel.open(items / "guide.md"));
  ASSERT_TRUE(runUntil([&] { return gtk_widget_get_height(panel.root()) > 0; }));
  EXPECT_LE(gtk_widget_get_height(panel.root()), 600 * 8 / 10);
  EXPECT_LE(gtk_widget_get_width(panel.root()), 1600 * 8 / 10);
}

}  // namespace
}  // namespace lumisk::test
