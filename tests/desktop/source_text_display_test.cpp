// Texts in the source layer that are out of the ordinary: what is broken for display is whole for
// copying, reading and finding.

#include <gtest/gtest.h>

#include "desktop/find_bar.h"
#include "desktop/source_text.h"
#include "desktop/text_search.h"
#include "screen.h"

namespace lumisk::test {
namespace {

/// In bytes, with its end.
constexpr int kLongestLine = 4 * 1024 + 2;
constexpr int kLongestWord = 1024 + 2;

GtkTextBuffer* bufferOf(const desktop::SourceText& source) {
  return gtk_text_view_get_buffer(GTK_TEXT_VIEW(source.widget()));
}

std::string textBetween(const GtkTextIter& start, const GtkTextIter& end) {
  char* text = gtk_text_iter_get_visible_text(&start, &end);
  std::string result = text;
  g_free(text);
  return result;
}

std::string textOf(const desktop::SourceText& source) {
  GtkTextIter start;
  GtkTextIter end;
  gtk_text_buffer_get_bounds(bufferOf(source), &start, &end);
  return textBetween(start, end);
}

/// In bytes.
int longestLine(GtkTextBuffer* buffer) {
  int longest = 0;
  GtkTextIter at;
  gtk_text_buffer_get_start_iter(buffer, &at);
  do {
    longest = std::max(longest, gtk_text_iter_get_bytes_in_line(&at));
  } while (gtk_text_iter_forward_line(&at));
  return longest;
}

/// Numbers without a blank, none like another: "1000;1001;1002;…"
std::string numbers(std::size_t size) {
  std::string text;
  for (int i = 1'000'000; text.size() < size; ++i) text += std::to_string(i) + ";";
  return text;
}

struct Row {
  const char* label;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.label; }

std::string repeated(std::string_view piece, std::size_t size) {
  std::string text;
  while (text.size() < size) text += piece;
  return text;
}

class LongLine : public testing::TestWithParam<Row> {};

TEST_P(LongLine, IsBrokenForDisplayOnly) {
  desktop::SourceText source;
  source.setText(GetParam().text);
  source.fillNow();
  EXPECT_TRUE(textOf(source) == GetParam().text) << "no character is lost or added";
  EXPECT_LE(longestLine(bufferOf(source)), kLongestLine);
}

INSTANTIATE_TEST_SUITE_P(Texts, LongLine,
                         testing::Values(Row{"no blanks", numbers(300'000)},
                                         Row{"words", repeated("some words and ", 300'000)},
                                         Row{"two bytes each", repeated("\u00e4", 300'000)},
                                         Row{"four bytes each", repeated("\U0001F600", 300'000)},
                                         Row{"an accent each", repeated("e\u0301", 300'000)},
                                         Row{"accents only", repeated("\u0301", 300'000)},
                                         Row{"among short lines",
                                             "a\r\n\r\nb\n" + numbers(200'000) + "\n\rc\n"},
                                         Row{"just long enough", std::string(1025, 'x')}));

TEST(LongWord, IsBrokenEarlier) {
  desktop::SourceText source;
  source.setText(numbers(300'000));
  source.fillNow();
  EXPECT_LE(longestLine(bufferOf(source)), kLongestWord);
}

TEST(Paragraphs, AreNotBroken) {
  const std::string text = repeated(repeated("some words and ", 3900) + "\n", 300'000);
  desktop::SourceText source;
  source.setText(text);
  source.fillNow();
  EXPECT_EQ(gtk_text_buffer_get_line_count(bufferOf(source)),
            1 + std::count(text.begin(), text.end(), '\n'));
}

TEST(LongLineCopied, IsWhole) {
  const std::string text = numbers(50'000);
  desktop::SourceText source;
  source.setText(text);
  source.fillNow();
  GtkWindow* window = GTK_WINDOW(gtk_window_new());
  gtk_window_set_child(window, source.widget());
  gtk_window_present(window);
  GtkTextIter start;
  GtkTextIter end;
  gtk_text_buffer_get_bounds(bufferOf(source), &start, &end);
  gtk_text_buffer_select_range(bufferOf(source), &start, &end);
  g_signal_emit_by_name(source.widget(), "copy-clipboard");
  struct Read {
    std::string text;
    bool isDone = false;
  } read;
  gdk_clipboard_read_text_async(
      gtk_widget_get_clipboard(source.widget()), nullptr,
      [](GObject* clipboard, GAsyncResult* result, gpointer data) {
        char* copied = gdk_clipboard_read_text_finish(GDK_CLIPBOARD(clipboard), result, nullptr);
        *static_cast<Read*>(data) = {copied == nullptr ? "" : copied, true};
        g_free(copied);
      },
      &read);
  ASSERT_TRUE(runUntil([&] { return read.isDone; }));
  EXPECT_TRUE(read.text == text);
  gtk_window_destroy(window);
}

/// All matches by walking in one direction.
std::vector<int> offsetsOf(GtkTextBuffer* buffer, const char* word, bool isForward) {
  std::vector<int> offsets;
  GtkTextIter at;
  if (isForward)
    gtk_text_buffer_get_start_iter(buffer, &at);
  else
    gtk_text_buffer_get_end_iter(buffer, &at);
  while (const auto match =
             isForward ? desktop::findForward(at, word) : desktop::findBackward(at, word)) {
    offsets.push_back(gtk_text_iter_get_offset(&match->start));
    EXPECT_EQ(textBetween(match->start, match->end), word);
    at = isForward ? match->end : match->start;
  }
  return offsets;
}

TEST(LongLineSearched, EveryNumberIsFoundOnceInBothDirections) {
  desktop::SourceText source;
  source.setText(numbers(60'000));
  source.fillNow();
  for (int i = 1'000'000; i < 1'007'500; i += 7) {
    const std::string word = ";" + std::to_string(i + 1) + ";";
    const auto forward = offsetsOf(bufferOf(source), word.c_str(), true);
    ASSERT_EQ(forward.size(), 1u) << word;
    if (i % 49 == 0) {
      ASSERT_EQ(offsetsOf(bufferOf(source), word.c_str(), false), forward) << word;
    }
  }
}

TEST(LongLineSearched, MatchesComeInOrder) {
  desktop::SourceText source;
  const std::string text = repeated("aab", 30'000);
  source.setText(text);
  source.fillNow();
  auto forward = offsetsOf(bufferOf(source), "aab", true);
  EXPECT_EQ(forward.size(), text.size() / 3);
  EXPECT_TRUE(std::is_sorted(forward.begin(), forward.end()));
  auto backward = offsetsOf(bufferOf(source), "aab", false);
  std::reverse(backward.begin(), backward.end());
  EXPECT_EQ(backward, forward);
}

TEST(LongLineSearched, ALimitHoldsForWhereAMatchBegins) {
  desktop::SourceText source;
  source.setText("one two one two");
  GtkTextIter start;
  GtkTextIter limit;
  gtk_text_buffer_get_iter_at_offset(bufferOf(source), &start, 1);
  gtk_text_buffer_get_iter_at_offset(bufferOf(source), &limit, 8);
  EXPECT_FALSE(desktop::findForward(start, "one", &limit));
  EXPECT_TRUE(desktop::findForward(start, "ONE"));
}

/// A find bar over a long text, in a window.
class FindInLongText : public testing::Test {
 protected:
  FindInLongText() : window_(GTK_WINDOW(gtk_window_new())) {
    source_.setText(numbers(3'000'000));
    source_.fillNow();
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
  ~FindInLongText() override {
    bar_.close();
    gtk_window_destroy(window_);
  }

  void type(const std::string& text) {
    GtkWidget* entry = gtk_window_get_focus(window_);
    while (!GTK_IS_SEARCH_ENTRY(entry)) entry = gtk_widget_get_parent(entry);
    gtk_editable_set_text(GTK_EDITABLE(entry), text.c_str());
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

  desktop::SourceText source_;
  desktop::FindBar bar_{[this] {
    desktop::ShownDocument shown;
    shown.text = GTK_TEXT_VIEW(source_.widget());
    return shown;
  }};
  GtkWindow* window_;
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

}  // namespace
}  // namespace lumisk::test
