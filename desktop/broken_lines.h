#pragma once

#include <gtk/gtk.h>

#include <cstddef>
#include <string_view>

namespace lumisk::desktop {

/// Fills a text buffer so that no line of it is too long for the toolkit.
///
/// A text view lays out each line as a whole, and again whenever it becomes longer: at a megabyte
/// without a line end, as data files have it, the program would stand still for minutes. Such a
/// line is therefore broken at a blank, or within a word as long as no word is. The line end that
/// stands there carries a tag that makes it invisible: the view starts a new line, but what is
/// copied, read back and found (`text_search.h`) is the text as it was.
class BrokenLines {
 public:
  /// `buffer` is borrowed and empty.
  explicit BrokenLines(GtkTextBuffer* buffer);

  /// Empties the buffer.
  void clear();
  /// Adds `text`, which is valid UTF-8, to the end. CR and LF of one line end come in one call.
  void append(std::string_view text);

 private:
  std::size_t pass(std::string_view text, std::size_t start, std::size_t end);
  void insert(std::string_view text);
  void insertBreak();

  GtkTextBuffer* buffer_;
  /// Bytes since the last line end, and since the last blank.
  std::size_t lineLength_ = 0;
  std::size_t wordLength_ = 0;
};

/// The tag of the line ends that are not part of the text; null where there are none.
GtkTextTag* lineBreakTag(GtkTextBuffer* buffer);

}  // namespace lumisk::desktop
