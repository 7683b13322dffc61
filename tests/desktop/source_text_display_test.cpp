// Texts in the source layer that are out of the ordinary: what is broken for display is whole for
// copying, reading and finding.

#include <gtest/gtest.h>

#include "desktop/text_search.h"
#include "screen.h"
#include "source_texts.h"

namespace lumisk::test {
namespace {

/// In bytes, with its end.
constexpr int kLongestLine = 4 * 1024 + 2;
constexpr int kLongestWord = 1024 + 2;

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

struct Row {
  const char* label;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.label; }

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

TEST(SourceTextOnScreen, FillsInEachTextThatTakesItsPlace) {
  desktop::SourceText source;
  source.setText(repeated("one line\n", 200'000));
  EXPECT_FALSE(source.isComplete());
  source.fill();
  EXPECT_TRUE(runUntil([&] { return source.isComplete(); }));
  const std::string next = repeated("another line\n", 300'000);
  source.setText(next);
  EXPECT_TRUE(runUntil([&] { return source.isComplete(); }));
  EXPECT_TRUE(textOf(source) == next);
}

TEST(SourceTextUnseen, GivesTheViewNothingToLayOut) {
  desktop::SourceText source;
  source.setText("one line\n");
  EXPECT_EQ(textOf(source), "one line\n");
  auto* const view = GTK_TEXT_VIEW(source.widget());
  EXPECT_EQ(gtk_text_buffer_get_char_count(gtk_text_view_get_buffer(view)), 0);
  source.show();
  EXPECT_EQ(gtk_text_view_get_buffer(view), source.buffer());
}

TEST(LongLineCopied, IsWhole) {
  const std::string text = numbers(50'000);
  desktop::SourceText source;
  source.setText(text);
  source.show();
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

}  // namespace
}  // namespace lumisk::test
