// What the right button offers in a page.

#include <gmock/gmock.h>

#include "panel_test.h"

namespace lumisk::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kSeparator = WEBKIT_CONTEXT_MENU_ACTION_NO_ACTION;

class PageMenuTest : public PanelTest {
 protected:
  PageMenuTest() {
    writeAll(folder_ / "offers.md",
             "<p id=\"bare\" style=\"height: 200px\"></p>\n\n[link](next.html)\n\n"
             "<input value=\"field\">\n\n<a href=\"next.html\"><img width=\"90\" height=\"90\" "
             "src=\"data:image/gif;base64,"
             "R0lGODlhAQABAIAAAP///wAAACwAAAAAAQABAAACAkQBADs=\"></a>\n");
  }

  /// What the engine is about to show after a click with the right button beside the element's
  /// upper left corner: the items' actions, in their order.
  std::vector<int> offeredAt(const std::string& selector) {
    const std::string place = "document.querySelector('" + selector + "').getBoundingClientRect()";
    const Point at = onScreen(GTK_WIDGET(page()), std::stod(evaluate(page(), place + ".x + 5")),
                              std::stod(evaluate(page(), place + ".y + 8")));
    offered_.clear();
    const desktop::SignalHandler offered(page(), "context-menu", G_CALLBACK(&PageMenuTest::record),
                                         this);
    clickAt(at.x, at.y, MouseButton::Right);
    runFor(500);
    return offered_;
  }
  bool isMenuOpen() {
    for (GtkWidget* child = gtk_widget_get_first_child(GTK_WIDGET(page())); child != nullptr;
         child = gtk_widget_get_next_sibling(child))
      if (GTK_IS_POPOVER(child) && gtk_widget_get_mapped(child) == TRUE) return true;
    return false;
  }

 private:
  static gboolean record(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*,
                         gpointer self) {
    for (guint i = 0; i < webkit_context_menu_get_n_items(menu); ++i)
      static_cast<PageMenuTest*>(self)->offered_.push_back(
          webkit_context_menu_item_get_stock_action(
              webkit_context_menu_get_item_at_position(menu, i)));
    return FALSE;
  }
  std::vector<int> offered_;
};

TEST_F(PageMenuTest, ALinkCanBeFollowedAndCopied) {
  ASSERT_NO_FATAL_FAILURE(open("offers.md"));
  EXPECT_THAT(offeredAt("a"), ElementsAre(WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
                                          WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD));
  EXPECT_TRUE(isMenuOpen());
  press("Escape");
  EXPECT_TRUE(runUntil([&] { return !isMenuOpen(); }));
  EXPECT_TRUE(panel_->isVisible()) << "the key was the menu's";
}

TEST_F(PageMenuTest, AFieldCanBeEdited) {
  ASSERT_NO_FATAL_FAILURE(open("offers.md"));
  const std::vector<int> offered = offeredAt("input");
  for (const int action : {WEBKIT_CONTEXT_MENU_ACTION_CUT, WEBKIT_CONTEXT_MENU_ACTION_COPY,
                           WEBKIT_CONTEXT_MENU_ACTION_PASTE, WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL})
    EXPECT_THAT(offered, Contains(action));
  press("Escape");
}

TEST_F(PageMenuTest, APictureInALinkCanBeCopiedButNeitherSavedNorShownElsewhere) {
  ASSERT_NO_FATAL_FAILURE(open("offers.md"));
  EXPECT_THAT(offeredAt("img"),
              ElementsAre(WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
                          WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD, kSeparator,
                          WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD,
                          WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_URL_TO_CLIPBOARD));
  press("Escape");
}

// Back and Reload of the engine's own would lead out of the document.
TEST_F(PageMenuTest, WhereNothingCanBeDoneNoMenuComes) {
  ASSERT_NO_FATAL_FAILURE(open("long.md"));
  panel_->close();
  ASSERT_NO_FATAL_FAILURE(open("offers.md"));
  EXPECT_THAT(offeredAt("#bare"), IsEmpty());
  EXPECT_FALSE(isMenuOpen());
}

}  // namespace
}  // namespace lumisk::test
