#include "desktop/find_bar.h"

#include <utility>

#include "desktop/accessible_name.h"
#include "desktop/text_search.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

constexpr auto kPageOptions = static_cast<WebKitFindOptions>(WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE |
                                                             WEBKIT_FIND_OPTIONS_WRAP_AROUND);
constexpr unsigned kNoLimit = G_MAXUINT;
/// How much to look through, and how many matches to count, before other work gets its turn.
constexpr int kCharactersAPiece = 16 * 1024;
constexpr int kMatchesAPiece = 200;
/// Pieces to look through at once for the next match, which is usually near.
constexpr int kPiecesAtOnce = 8;
/// A match that lies across a line end for display is no longer than this many times the text that
/// is looked for.
constexpr int kMostCharactersForOne = 3;

GtkWidget* newStepButton(const char* icon, TextKey tooltip) {
  GtkWidget* button = gtk_button_new_from_icon_name(icon);
  setTooltipAndName(button, tr(tooltip));
  return button;
}

}  // namespace

FindBar::FindBar(std::function<ShownDocument()> findTarget)
    : findTarget_(std::move(findTarget)), bar_(GRef<GtkWidget>::retain(gtk_search_bar_new())) {
  buildBar();
}

FindBar::~FindBar() {
  forgetTarget();
  g_signal_handlers_disconnect_by_data(entry_, this);
}

void FindBar::buildBar() {
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
  entry_ = gtk_search_entry_new();
  gtk_widget_set_size_request(entry_, 240, -1);
  setAccessibleName(entry_, tr("find.entry"));
  count_ = gtk_label_new(nullptr);
  gtk_label_set_width_chars(GTK_LABEL(count_), 12);
  gtk_label_set_xalign(GTK_LABEL(count_), 0);
  gtk_widget_add_css_class(count_, "dim-label");
  gtk_widget_add_css_class(count_, "find-count");
  GtkWidget* steps = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
  gtk_widget_add_css_class(steps, "linked");
  GtkWidget* previous = newStepButton("go-up-symbolic", "command.find-previous");
  GtkWidget* next = newStepButton("go-down-symbolic", "command.find-next");
  gtk_box_append(GTK_BOX(steps), previous);
  gtk_box_append(GTK_BOX(steps), next);
  gtk_box_append(GTK_BOX(box), entry_);
  gtk_box_append(GTK_BOX(box), steps);
  gtk_box_append(GTK_BOX(box), count_);
  gtk_search_bar_set_child(GTK_SEARCH_BAR(bar_.get()), box);
  gtk_search_bar_connect_entry(GTK_SEARCH_BAR(bar_.get()), GTK_EDITABLE(entry_));

  const auto on = [this](GtkWidget* widget, const char* signal, void (*handler)(FindBar*)) {
    g_signal_connect_swapped(widget, signal, G_CALLBACK(handler), this);
  };
  on(entry_, "search-changed", [](FindBar* bar) { bar->searchAnew(); });
  on(entry_, "activate", [](FindBar* bar) { bar->next(); });
  on(previous, "clicked", [](FindBar* bar) { bar->previous(); });
  on(next, "clicked", [](FindBar* bar) { bar->next(); });
}

bool FindBar::isOpen() const {
  return gtk_search_bar_get_search_mode(GTK_SEARCH_BAR(bar_.get())) == TRUE;
}

bool FindBar::hasFocus() const {
  return (gtk_widget_get_state_flags(entry_) & GTK_STATE_FLAG_FOCUS_WITHIN) != 0;
}

std::string FindBar::countText() const { return gtk_label_get_text(GTK_LABEL(count_)); }

void FindBar::open() {
  gtk_search_bar_set_search_mode(GTK_SEARCH_BAR(bar_.get()), TRUE);
  gtk_widget_grab_focus(entry_);
  gtk_editable_select_region(GTK_EDITABLE(entry_), 0, -1);
  searchAnew();
}

void FindBar::close() {
  forgetTarget();
  gtk_search_bar_set_search_mode(GTK_SEARCH_BAR(bar_.get()), FALSE);
  gtk_label_set_text(GTK_LABEL(count_), "");
}

void FindBar::forgetTarget() {
  counting_.cancel();
  counted_.reset();
  seeking_.cancel();
  forgetMark(countedUpTo_);
  forgetMark(soughtUpTo_);
  text_ = {};
  if (page_) webkit_find_controller_search_finish(webkit_web_view_get_find_controller(page_.get()));
  page_ = {};
}

GRef<GtkTextMark> FindBar::newMark(const GtkTextIter& at) const {
  auto mark = GRef<GtkTextMark>::adopt(gtk_text_mark_new(nullptr, TRUE));
  gtk_text_buffer_add_mark(gtk_text_view_get_buffer(text_.get()), mark.get(), &at);
  return mark;
}

void FindBar::forgetMark(GRef<GtkTextMark>& mark) const {
  if (mark && gtk_text_mark_get_deleted(mark.get()) == FALSE)
    gtk_text_buffer_delete_mark(gtk_text_view_get_buffer(text_.get()), mark.get());
  mark = {};
}

void FindBar::searchAnew() {
  forgetTarget();
  const char* text = gtk_editable_get_text(GTK_EDITABLE(entry_));
  gtk_label_set_text(GTK_LABEL(count_), "");
  if (!isOpen() || *text == '\0') return;
  const ShownDocument shown = findTarget_();
  if (shown.page != nullptr)
    searchPage(shown.page, text);
  else if (shown.text != nullptr)
    searchText(shown.text);
}

void FindBar::searchPage(WebKitWebView* page, const char* text) {
  page_ = GRef<WebKitWebView>::retain(page);
  WebKitFindController* controller = webkit_web_view_get_find_controller(page);
  counted_ = std::make_unique<SignalHandler>(controller, "counted-matches",
                                             G_CALLBACK(&FindBar::counted), this);
  webkit_find_controller_count_matches(controller, text, kPageOptions, kNoLimit);
  webkit_find_controller_search(controller, text, kPageOptions, kNoLimit);
}

void FindBar::counted(WebKitFindController*, unsigned count, gpointer self) {
  static_cast<FindBar*>(self)->showCount(count);
}

void FindBar::searchText(GtkTextView* view) {
  text_ = GRef<GtkTextView>::retain(view);
  matches_ = 0;
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(view);
  GtkTextIter start;
  gtk_text_buffer_get_start_iter(buffer, &start);
  countedUpTo_ = newMark(start);
  gtk_text_buffer_place_cursor(buffer, &start);
  stepInText(Direction::Forward);
  // After the text that is still coming in.
  counting_.whileIdle([this] { return countPieceOfText(); }, G_PRIORITY_LOW);
}

bool FindBar::countPieceOfText() {
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(text_.get());
  const char* text = gtk_editable_get_text(GTK_EDITABLE(entry_));
  GtkTextIter from;
  gtk_text_buffer_get_iter_at_mark(buffer, &from, countedUpTo_.get());
  GtkTextIter limit = from;
  gtk_text_iter_forward_chars(&limit, kCharactersAPiece);
  if (!gtk_text_iter_is_end(&limit)) gtk_text_iter_forward_line(&limit);
  for (int i = 0; i < kMatchesAPiece; ++i) {
    const auto match = findForward(from, text, &limit);
    if (match) ++matches_;
    from = match ? match->end : limit;
    if (!match) break;
  }
  const bool isMore = gtk_text_iter_is_end(&from) == FALSE;
  gtk_text_buffer_move_mark(buffer, countedUpTo_.get(), &from);
  if (!isMore) gtk_text_buffer_delete_mark(buffer, countedUpTo_.get());
  showCount(matches_);
  return isMore;
}

void FindBar::showCount(unsigned count) {
  const std::string text = count > 0 ? trCount("find.count", count) : tr("find.none");
  gtk_label_set_text(GTK_LABEL(count_), text.c_str());
}

void FindBar::step(Direction direction) {
  if (!isOpen()) return open();
  const ShownDocument shown = findTarget_();
  const bool isSame =
      shown.page == page_.get() && (shown.page != nullptr || shown.text == text_.get());
  if (!isSame) return searchAnew();
  if (text_) return stepInText(direction);
  if (!page_) return;
  WebKitFindController* controller = webkit_web_view_get_find_controller(page_.get());
  if (direction == Direction::Forward)
    webkit_find_controller_search_next(controller);
  else
    webkit_find_controller_search_previous(controller);
}

/// Selects the next match. In a long text it may be far away, or nowhere, so the search goes on
/// while nothing else is to do.
void FindBar::stepInText(Direction direction) {
  GtkTextIter start;
  GtkTextIter end;
  gtk_text_buffer_get_selection_bounds(gtk_text_view_get_buffer(text_.get()), &start, &end);
  forgetMark(soughtUpTo_);
  soughtUpTo_ = newMark(direction == Direction::Forward ? end : start);
  direction_ = direction;
  hasWrapped_ = false;
  for (int i = 0; i < kPiecesAtOnce; ++i)
    if (!seekPieceOfText()) return seeking_.cancel();
  seeking_.whileIdle([this] { return seekPieceOfText(); });
}

/// True when there is more to look through.
bool FindBar::seekPieceOfText() {
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(text_.get());
  const char* text = gtk_editable_get_text(GTK_EDITABLE(entry_));
  const bool isForward = direction_ == Direction::Forward;
  GtkTextIter from;
  gtk_text_buffer_get_iter_at_mark(buffer, &from, soughtUpTo_.get());
  GtkTextIter limit = from;
  gtk_text_iter_forward_chars(&limit, isForward ? kCharactersAPiece : -kCharactersAPiece);
  if (!isForward)
    gtk_text_iter_set_line_offset(&limit, 0);
  else if (!gtk_text_iter_is_end(&limit))
    gtk_text_iter_forward_line(&limit);
  auto match = isForward ? findForward(from, text, &limit) : findBackward(from, text, &limit);
  if (!match) return seekOn(limit);
  gtk_text_buffer_select_range(buffer, &match->start, &match->end);
  gtk_text_view_scroll_to_iter(text_.get(), &match->start, 0.1, FALSE, 0, 0);
  return false;
}

/// Goes on at `limit`, or once from the other end. False when all has been looked through.
bool FindBar::seekOn(const GtkTextIter& limit) {
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(text_.get());
  const bool isForward = direction_ == Direction::Forward;
  GtkTextIter next = limit;
  const bool isAtEnd =
      (isForward ? gtk_text_iter_is_end(&limit) : gtk_text_iter_is_start(&limit)) != FALSE;
  if (isAtEnd) {
    if (std::exchange(hasWrapped_, true)) return false;
    if (isForward)
      gtk_text_buffer_get_start_iter(buffer, &next);
    else
      gtk_text_buffer_get_end_iter(buffer, &next);
  } else if (!isForward) {
    const char* text = gtk_editable_get_text(GTK_EDITABLE(entry_));
    gtk_text_iter_forward_chars(&next,
                                static_cast<int>(g_utf8_strlen(text, -1)) * kMostCharactersForOne);
  }
  gtk_text_buffer_move_mark(buffer, soughtUpTo_.get(), &next);
  return true;
}

}  // namespace lumisk::desktop
