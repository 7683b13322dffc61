// Finding in a source text: near and far, in both directions, also while the text is still coming
// in.

#include <gtest/gtest.h>

#include <set>

#include "desktop/find_bar.h"
#include "screen.h"
#include "source_texts.h"

namespace lumisk::test {
namespace {

/// A find bar over a text, in a window.
class FindInText : public testing::Test {
 protected:
  explicit FindInText(const std::string& text) : window_(GTK_WINDOW(gtk_window_new())) {
    source_.setText(text);
    source_.show();
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_box_append(GTK_BOX(box), bar_.widget());
    GtkWidget* scrolled = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled), source_.widget());
    gtk_widget_set_vexpand(scrolled, TRUE);
    gtk_box_append(GTK_BOX(box), scrolled);
    gtk_window_set_child(window_, box);
    gtk_window_set_default_size(window_, 600, 400);
    gtk_window_present(window_);
    bar_.open();
  }
  ~FindInText() override {
    bar_.close();
    gtk_window_destroy(window_);
  }

  GtkEditable* entry() {
    GtkWidget* entry = gtk_window_get_focus(window_);
    while (!GTK_IS_SEARCH_ENTRY(entry)) entry = gtk_widget_get_parent(entry);
    return GTK_EDITABLE(entry);
  }
  /// Until the bar has taken it up, which it does once nothing more is typed.
  void type(const std::string& text) {
    bool isTaken = false;
    const desktop::SignalHandler taken(
        entry(), "search-changed",
        G_CALLBACK(+[](GtkSearchEntry*, gpointer isTyped) { *static_cast<bool*>(isTyped) = true; }),
        &isTaken);
    gtk_editable_set_text(entry(), text.c_str());
    EXPECT_TRUE(runUntil([&] { return isTaken; }));
  }
  std::string selected() {
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_selection_bounds(bufferOf(source_), &start, &end);
    return textBetween(start, end);
  }
  int selectedAt() {
    GtkTextIter start;
    gtk_text_buffer_get_selection_bounds(bufferOf(source_), &start, nullptr);
    return gtk_text_iter_get_offset(&start);
  }

  /// Whether all of the selection is on screen.
  bool isSelectionSeen() {
    auto* view = GTK_TEXT_VIEW(source_.widget());
    GtkTextIter ends[2];
    gtk_text_buffer_get_selection_bounds(bufferOf(source_), &ends[0], &ends[1]);
    GdkRectangle seen{};
    gtk_text_view_get_visible_rect(view, &seen);
    for (const GtkTextIter& end : ends) {
      GdkRectangle place{};
      gtk_text_view_get_iter_location(view, &end, &place);
      if (place.y < seen.y || place.y + place.height > seen.y + seen.height) return false;
    }
    return true;
  }

  desktop::SourceText source_;
  desktop::FindBar bar_{[this] {
    desktop::FindTarget target;
    target.shown.text = GTK_TEXT_VIEW(source_.widget());
    return target;
  }};
  GtkWindow* window_;
};

class FindInLongText : public FindInText {
 protected:
  FindInLongText() : FindInText(numbers(3'000'000)) { source_.fillNow(); }
};

TEST_F(FindInLongText, FarMatchesAreFoundCountedAndGoneThroughBothWays) {
  type("300000;");
  ASSERT_TRUE(runUntil([&] { return selected() == "300000;"; }));
  EXPECT_TRUE(runUntil([&] { return bar_.countText() == "1 match"; })) << bar_.countText();
  type("99999;");
  ASSERT_TRUE(runUntil([&] { return selected() == "99999;"; }));
  const int first = selectedAt();
  EXPECT_TRUE(runUntil([&] { return bar_.countText() == "3 matches"; })) << bar_.countText();
  bar_.next();
  ASSERT_TRUE(runUntil([&] { return selectedAt() > first; }));
  const int second = selectedAt();
  bar_.previous();
  EXPECT_TRUE(runUntil([&] { return selectedAt() == first; }));
  bar_.previous();
  EXPECT_TRUE(runUntil([&] { return selectedAt() > second; })) << "from the other end";
  EXPECT_EQ(selected(), "99999;");
}

TEST_F(FindInLongText, EveryBreakForDisplayIsLookedAcross) {
  // The words around breaks, read from the buffer, each of which stands there once.
  GtkTextIter at;
  gtk_text_buffer_get_start_iter(bufferOf(source_), &at);
  for (int line = 50; line < 60; ++line) {
    gtk_text_buffer_get_iter_at_line(bufferOf(source_), &at, line);
    GtkTextIter before = at;
    GtkTextIter after = at;
    gtk_text_iter_backward_chars(&before, 8);
    gtk_text_iter_forward_chars(&after, 8);
    const std::string word = textBetween(before, after);
    type(word);
    EXPECT_TRUE(runUntil([&] { return selected() == word; })) << word;
  }
}

class FindInShorterText : public FindInText {
 protected:
  FindInShorterText() : FindInText(numbers(200'000)) { source_.fillNow(); }
};

TEST_F(FindInShorterText, NoneIsSaidOnceAllHasBeenLookedThrough) {
  std::set<std::string> said;
  const auto counts = [&](const std::string& final) {
    return runUntil([&] { return said.insert(bar_.countText()), bar_.countText() == final; });
  };
  type("1024000;");  // near the end, and there alone
  said.clear();
  EXPECT_TRUE(counts("1 match"));
  EXPECT_EQ(said, (std::set<std::string>{"", "1 match"})) << "counting took more than one turn";
  type("no such number");
  EXPECT_TRUE(counts("No matches"));
}

TEST_F(FindInShorterText, APastedPageIsCutAndLookedForToTheEnd) {
  type(numbers(20'000));
  EXPECT_LE(gtk_entry_buffer_get_length(
                gtk_text_get_buffer(GTK_TEXT(gtk_editable_get_delegate(entry())))),
            1000U);
  type(repeated("no such text ", 20'000));
  for (const bool isForward : {false, true}) {
    if (isForward)
      bar_.next();
    else
      bar_.previous();
    EXPECT_TRUE(runUntil([] { return g_main_context_pending(nullptr) == FALSE; }))
        << "there is an end to it";
  }
  EXPECT_EQ(selected(), "");
}

/// Short lines, with a word near the beginning, across the end of the first piece and at the end.
constexpr std::size_t kFirstPiece = std::size_t{64} * 1024;

std::string linesWithWords() {
  std::string text = "needle at the start\n" + repeated("some words and others\n", kFirstPiece);
  text.replace(kFirstPiece - 5, 10, "\nneedle on");
  return text + repeated("more words and others\n", 600'000) + "the last needle stands here\n";
}

class FindInTextThatComes : public FindInText {
 protected:
  FindInTextThatComes() : FindInText(linesWithWords()) {}
  bool isComplete() const { return source_.isComplete(); }
};

TEST_F(FindInTextThatComes, AMatchBeyondTheEndOfWhatIsThereIsSelectedWhenItComes) {
  type("LAST needle");
  ASSERT_FALSE(isComplete());
  EXPECT_EQ(selected(), "");
  source_.fill();
  ASSERT_TRUE(runUntil([&] { return selected() == "last needle"; }));
  EXPECT_TRUE(isComplete());
  EXPECT_TRUE(runUntil([&] { return bar_.countText() == "1 match"; })) << bar_.countText();
  EXPECT_TRUE(runUntil([&] { return isSelectionSeen(); }));
}

TEST_F(FindInTextThatComes, NothingIsGoneAroundBeforeAllIsThere) {
  type("needle");
  ASSERT_EQ(selectedAt(), 0);
  bar_.next();
  EXPECT_EQ(selectedAt(), 0) << "the next one is not there yet";
  source_.fill();
  ASSERT_TRUE(runUntil([&] { return selectedAt() > 0; }));
  EXPECT_EQ(selectedAt(), static_cast<int>(kFirstPiece) - 4) << "it lies across two pieces";
  bar_.next();
  ASSERT_TRUE(runUntil([&] { return selectedAt() > static_cast<int>(kFirstPiece); }));
  EXPECT_TRUE(isComplete());
  bar_.next();
  EXPECT_TRUE(runUntil([&] { return selectedAt() == 0; })) << "now from the start again";
  EXPECT_TRUE(runUntil([&] { return bar_.countText() == "3 matches"; })) << bar_.countText();
}

TEST_F(FindInTextThatComes, BackwardsFromTheStartWaitsForTheEnd) {
  type("needle");
  ASSERT_EQ(selectedAt(), 0);
  bar_.previous();
  EXPECT_EQ(selectedAt(), 0);
  source_.fill();
  ASSERT_TRUE(runUntil([&] { return selectedAt() > 0; }));
  EXPECT_TRUE(isComplete());
  EXPECT_GT(selectedAt(), 600'000) << "the last one";
  EXPECT_TRUE(runUntil([&] { return isSelectionSeen(); }));
}

TEST_F(FindInTextThatComes, AMatchInTheMiddleOfALongTextComesOnScreen) {
  source_.fillNow();
  type("needle on");
  ASSERT_TRUE(runUntil([&] { return selected() == "needle on"; }));
  EXPECT_TRUE(runUntil([&] { return isSelectionSeen(); }));
}

}  // namespace
}  // namespace lumisk::test
