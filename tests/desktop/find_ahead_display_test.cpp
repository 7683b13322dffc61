// The find bar before there is anything to look through: while a large file is made ready.

#include <string_view>

#include "desktop/curtain.h"
#include "large_item_test.h"

namespace lumisk::test {
namespace {

using FindAhead = LargeItem;

TEST_F(FindAhead, IsOfWhatComesOnceItIsThere) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  press("ctrl+f");
  ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  press("b e g i n n i n g");
  EXPECT_TRUE(runUntil([&] {
    return std::string_view(gtk_editable_get_text(GTK_EDITABLE(focus()))) == "beginning";
  }));
  queue_.runAll();
  ASSERT_TRUE(isShown());
  EXPECT_TRUE(panel_->findBar().hasFocus());
  ASSERT_TRUE(runUntil([&] {
    // Until it can be seen it is not looked through, which would have all of it laid out before.
    if (desktop::isCurtainClosed(page())) {
      EXPECT_EQ(panel_->findBar().countText(), "");
    }
    return !desktop::isCurtainClosed(page());
  }));
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "1 match"; }));
}

TEST_F(FindAhead, OpensByAnyOfItsKeys) {
  request("large.txt");
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  press("F3");
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  panel_->perform(desktop::Command::Reload);
  EXPECT_FALSE(panel_->findBar().isOpen());
}

TEST_F(FindAhead, IsOverWhereNoTextHasCome) {
  request("large.bin");
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  press("ctrl+f");
  ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  queue_.runAll();
  ASSERT_TRUE(runUntil([&] { return panel_->content() != nullptr; }));
  EXPECT_FALSE(panel_->findBar().isOpen());
  EXPECT_TRUE(
      runUntil([&] { return focus() != nullptr && panel_->findBar().hasFocus() == false; }));
  press("space");
  EXPECT_TRUE(closes());
}

}  // namespace
}  // namespace lumisk::test
