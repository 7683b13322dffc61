#pragma once

#include <gtk/gtk.h>

#include "desktop/broken_lines.h"
#include "desktop/gref.h"
#include "ui/shared_text.h"

namespace lumisk::desktop {

/// A read-only text view for a text of any length, in lines of any length. The beginning is in the
/// buffer at once; the rest follows in pieces, once `fill` was called, while nothing else is to do.
/// The view gets the buffer only when it is to be seen, because the toolkit measures every line of
/// a view, seen or not, while the page beside it is being made ready.
class SourceText {
 public:
  SourceText();
  SourceText(const SourceText&) = delete;
  SourceText& operator=(const SourceText&) = delete;
  ~SourceText();

  GtkWidget* widget() const { return view_.get(); }
  GtkTextBuffer* buffer() const { return buffer_.get(); }
  void setText(const ui::SharedText& text);
  /// Gives the view its text: it is to be seen from now on.
  void show();
  /// Begins to fill in the rest, of this text and of each that takes its place.
  void fill();
  /// All of it at once.
  void fillNow();
  bool isComplete() const { return position_ == text_.size(); }

 private:
  bool appendPiece();
  void fillWhileIdle();
  void setComplete(bool isComplete);

  GRef<GtkWidget> view_;
  GRef<GtkTextBuffer> buffer_;
  BrokenLines lines_;
  ui::SharedText text_;
  std::size_t position_ = 0;
  bool isSeen_ = false;
  Deferred filling_;
};

/// Whether `view` holds the whole of its text, or more is to come: whoever only looks at the view
/// cannot tell the end of the text from the end of what has been filled in.
bool hasAllOfItsText(GtkTextView* view);

}  // namespace lumisk::desktop
