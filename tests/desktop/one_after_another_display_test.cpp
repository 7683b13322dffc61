// One document after another in the same panel: nothing of the one before reaches the next, and of
// many in a row the last one stays.

#include "panel_test.h"
#include "process_tree.h"

namespace lumisk::test {
namespace {

class OneAfterAnother : public PanelTest {
 protected:
  OneAfterAnother() {
    writeAll(folder_ / "first.md", "# First\n\nOf tides and more tides.\n");
    writeAll(folder_ / "second.md", "# Second\n\nOf other tides.\n");
    writeAll(folder_ / "third.csv", "Name,Year\ntides,1815\n");
  }
  /// What is selected in the document, whichever layer shows it.
  std::string selected() {
    const desktop::ShownDocument shown = desktop::findShownDocument(panel_->content());
    if (shown.text == nullptr) return evaluate(page(), "getSelection().toString()");
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_selection_bounds(gtk_text_view_get_buffer(shown.text), &start, &end);
    char* const text = gtk_text_iter_get_text(&start, &end);
    std::string result = text;
    g_free(text);
    return result;
  }
  std::string typed() { return gtk_editable_get_text(GTK_EDITABLE(focus())); }
  std::string count() { return panel_->findBar().countText(); }
};

// --- finding ---

TEST_F(OneAfterAnother, AFindIsOverWithItsDocument) {
  for (const char* mode : {"rendered", "source"}) {
    for (const char* next : {"second.md", "third.csv"}) {
      for (const bool closes : {false, true}) {
        SCOPED_TRACE(std::string(mode) + ", then " + next + (closes ? ", closed between" : ""));
        open("first.md");
        ASSERT_TRUE(panel_->presentation()->selectMode(mode));
        press("ctrl+f");
        ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
        press("t i d e s");
        ASSERT_TRUE(runUntil([&] { return count() == "2 matches" && selected() == "tides"; }));
        if (closes) panel_->close();
        open(next);
        runFor(300);
        EXPECT_FALSE(panel_->findBar().isOpen());
        EXPECT_EQ(count(), "");
        EXPECT_EQ(selected(), "");
        press("ctrl+f");
        ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
        runFor(300);
        EXPECT_EQ(typed(), "");
        EXPECT_EQ(count(), "");
        EXPECT_EQ(selected(), "");
        press("F3");
        runFor(300);
        EXPECT_EQ(selected(), "") << "there is nothing to find the next one of";
        press("Escape");
        EXPECT_TRUE(runUntil([&] { return !panel_->findBar().isOpen(); }));
      }
    }
  }
}

}  // namespace
}  // namespace lumisk::test
