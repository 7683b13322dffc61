#include "desktop/source_text.h"

#include <algorithm>
#include <string>

#include "desktop/accessible_name.h"
#include "desktop/display_text.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

/// Set on a view that waits for more of its text.
constexpr const char* kIncomplete = "lumisk-incomplete";

/// Takes a few milliseconds to insert.
constexpr std::size_t kPiece = std::size_t{64} * 1024;

/// The end of a piece that starts at `start`: not within a character, nor between CR and LF.
std::size_t pieceEnd(std::string_view text, std::size_t start) {
  std::size_t end = std::min(text.size(), start + kPiece);
  const auto splits = [&] {
    const bool inCharacter = (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U;
    return inCharacter || (text[end] == '\n' && text[end - 1] == '\r');
  };
  constexpr std::size_t kLongestStep = 4;
  for (std::size_t i = 0; i < kLongestStep && end < text.size() && splits(); ++i) --end;
  return end;
}

}  // namespace

SourceText::SourceText()
    : view_(GRef<GtkWidget>::retain(gtk_text_view_new())),
      buffer_(GRef<GtkTextBuffer>::adopt(gtk_text_buffer_new(nullptr))),
      lines_(buffer()) {
  auto* view = GTK_TEXT_VIEW(view_.get());
  gtk_text_view_set_editable(view, FALSE);
  gtk_text_view_set_cursor_visible(view, FALSE);
  gtk_text_view_set_monospace(view, TRUE);
  gtk_text_view_set_wrap_mode(view, GTK_WRAP_WORD_CHAR);
  gtk_text_buffer_set_enable_undo(buffer(), FALSE);
  gtk_widget_add_css_class(view_.get(), "source-text");
  // A line without letters ("---") begins at the left, as it does in an editor; one in a script
  // that runs from right to left still begins at the right.
  gtk_widget_set_direction(view_.get(), GTK_TEXT_DIR_LTR);
  setAccessibleName(view_.get(), tr("panel.source"));
}

SourceText::~SourceText() = default;

void SourceText::setText(const ui::SharedText& text) {
  filling_.cancel();
  text_ = text;
  position_ = 0;
  lines_.clear();
  appendPiece();
  if (isSeen_) fillWhileIdle();
}

void SourceText::show() { gtk_text_view_set_buffer(GTK_TEXT_VIEW(view_.get()), buffer()); }

void SourceText::fill() {
  isSeen_ = true;
  fillWhileIdle();
}

void SourceText::fillWhileIdle() {
  if (isComplete() || filling_.isPending()) return;
  filling_.whileIdle([this] { return appendPiece(); });
}

void SourceText::fillNow() {
  filling_.cancel();
  while (appendPiece()) {
  }
}

bool SourceText::appendPiece() {
  const std::string_view all = text_.view();
  const std::size_t end = pieceEnd(all, position_);
  const std::string piece = displayText(all.substr(position_, end - position_));
  lines_.append(piece);
  if (position_ == 0) {
    GtkTextIter first;
    gtk_text_buffer_get_start_iter(buffer(), &first);
    gtk_text_buffer_place_cursor(buffer(), &first);
  }
  position_ = end;
  setComplete(isComplete());
  return !isComplete();
}

void SourceText::setComplete(bool isComplete) {
  g_object_set_data(G_OBJECT(view_.get()), kIncomplete, isComplete ? nullptr : view_.get());
}

bool hasAllOfItsText(GtkTextView* view) {
  return g_object_get_data(G_OBJECT(view), kIncomplete) == nullptr;
}

}  // namespace lumisk::desktop
