#pragma once

#include <gtk/gtk.h>

#include "desktop/broken_lines.h"
#include "desktop/gref.h"
#include "ui/shared_text.h"

namespace lumisk::desktop {

/// A read-only text view for a text of any length, in lines of any length. The beginning is there
/// at once; the rest follows in pieces while nothing else is to do, and only once the view has been
/// on screen, because the toolkit measures every line of a view that is.
class SourceText {
 public:
  SourceText();
  SourceText(const SourceText&) = delete;
  SourceText& operator=(const SourceText&) = delete;
  ~SourceText();

  GtkWidget* widget() const { return view_.get(); }
  void setText(const ui::SharedText& text);
  /// Begins to fill in the rest.
  void fill();
  /// All of it at once, for who needs all of it: a search, a test.
  void fillNow();
  bool isComplete() const { return position_ == text_.size(); }

 private:
  bool appendPiece();

  GRef<GtkWidget> view_;
  BrokenLines lines_;
  ui::SharedText text_;
  std::size_t position_ = 0;
  Deferred filling_;
};

}  // namespace lumisk::desktop
