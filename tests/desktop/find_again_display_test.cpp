// The find bar while the document changes under it: it finds and counts in what is shown.

#include <gtest/gtest.h>

#include "panel_on_screen.h"

namespace lumisk::test {
namespace {

using desktop::Command;

class FindAgain : public testing::Test {
 protected:
  void look(const char* item, const char* text) {
    ASSERT_TRUE(panel_.open(items_ / item));
    panel_->perform(Command::Find);
    std::vector<GtkWidget*> entries;
    ASSERT_TRUE(runUntil([&] {
      entries =
          shownBelow(panel_.root(), [](GtkWidget* w) { return GTK_IS_SEARCH_ENTRY(w) == TRUE; });
      return entries.size() == 1;
    }));
    gtk_editable_set_text(GTK_EDITABLE(entries[0]), text);
  }
  /// Waits until the bar says so, and stays with it.
  bool says(const std::string& count) {
    const auto isSaid = [&] { return panel_->findBar().countText() == count; };
    if (!runUntil(isSaid)) return false;
    runFor(300);
    return isSaid();
  }

  ItemsToShow items_;
  PanelOnScreen panel_;
};

TEST_F(FindAgain, InTheOtherModeOfData) {
  look("data.json", "\"a\" :");
  EXPECT_TRUE(says("1 match"));
  ASSERT_TRUE(panel_->presentation()->selectMode("text"));
  EXPECT_TRUE(says("No matches"));
  ASSERT_TRUE(panel_->presentation()->selectMode("formatted"));
  EXPECT_TRUE(says("1 match"));
}

TEST_F(FindAgain, InTheSourceOfADocumentAndBack) {
  look("guide.md", "next");
  EXPECT_TRUE(says("1 match"));
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  EXPECT_TRUE(says("2 matches"));
  ASSERT_TRUE(panel_->presentation()->selectMode("rendered"));
  EXPECT_TRUE(says("1 match"));
}

TEST_F(FindAgain, WhereALinkLedAndOnTheWayBack) {
  look("guide.md", "text");
  EXPECT_TRUE(says("2 matches"));
  ASSERT_TRUE(panel_.followLink());
  EXPECT_TRUE(says("No matches"));
  panel_->perform(Command::GoBack);
  EXPECT_TRUE(says("2 matches"));
}

TEST_F(FindAgain, InWhatALongTextHoldsBack) {
  std::string text;
  while (text.size() < 400'000) text += "int value = 1;\n";
  writeAll(items_ / "long.cpp", text + "int needle = 2;\n");
  look("long.cpp", "needle");
  EXPECT_TRUE(says("1 match"));
}

TEST_F(FindAgain, NothingWhileTheBarIsClosed) {
  look("data.json", "a");
  EXPECT_TRUE(says("1 match"));
  panel_->findBar().close();
  ASSERT_TRUE(panel_->presentation()->selectMode("text"));
  EXPECT_TRUE(says(""));
}

}  // namespace
}  // namespace lumisk::test
