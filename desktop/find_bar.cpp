#include "desktop/find_bar.h"

#include <utility>

#include "desktop/accessible_name.h"
#include "desktop/beginning_first.h"
#include "desktop/source_text.h"
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
/// Nobody looks for a text as long as a page, but one is pasted easily. Its longest match is far
/// shorter than a piece, so that every piece leads on.
constexpr int kLongestEntry = 1000;  // characters
static_assert(kLongestEntry * kMostCharactersForOne < kCharactersAPiece / 2);

/// Room above and below a match, as a part of the view.
constexpr double kMarginOfMatch = 0.1;

GtkWidget* newStepButton(const char* icon, TextKey tooltip) {
  GtkWidget* button = gtk_button_new_from_icon_name(icon);
  setTooltipAndName(button, tr(tooltip));
  return button;
}

/// Where to look on when `from` to the end holds no match so far: one may have begun there already.
GtkTextIter beforeTheEnd(const GtkTextIter& from, int longestMatch) {
  GtkTextIter at = from;
  gtk_text_iter_forward_to_end(&at);
  gtk_text_iter_backward_chars(&at, longestMatch);
  return gtk_text_iter_compare(&at, &from) < 0 ? from : at;
}

}  // namespace

FindBar::FindBar(std::function<FindTarget()> findTarget)
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
  gtk_text_set_max_length(GTK_TEXT(gtk_editable_get_delegate(GTK_EDITABLE(entry_))), kLongestEntry);
  // Read out when it changes, while the keyboard stays in the entry.
  count_ = GTK_WIDGET(
      g_object_new(GTK_TYPE_LABEL, "accessible-role", GTK_ACCESSIBLE_ROLE_STATUS, nullptr));
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
  if (!findTarget_().hasText()) return;
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
  scrolling_.cancel();
  textGrew_.reset();
  isWaiting_ = isSeekWaiting_ = isCountWaiting_ = false;
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
  const FindTarget target = findTarget_();
  isWaiting_ = target.isComing;
  if (target.shown.page != nullptr)
    searchPage(target.shown.page, text);
  else if (target.shown.text != nullptr)
    searchText(target.shown.text);
}

void FindBar::searchPage(WebKitWebView* page, const char* text) {
  page_ = GRef<WebKitWebView>::retain(page);
  showAll(page);
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
  textGrew_ =
      std::make_unique<SignalHandler>(buffer, "changed", G_CALLBACK(&FindBar::textGrew), this);
  stepInText(Direction::Forward);
  // After the text that is still coming in.
  counting_.whileIdle([this] { return countPieceOfText(); }, G_PRIORITY_LOW);
}

int FindBar::longestMatch() const {
  const char* text = gtk_editable_get_text(GTK_EDITABLE(entry_));
  return static_cast<int>(g_utf8_strlen(text, -1)) * kMostCharactersForOne;
}

/// Once the piece is there: whoever fills it in is still at work.
void FindBar::textGrew(GtkTextBuffer*, gpointer self) {
  auto* bar = static_cast<FindBar*>(self);
  if (std::exchange(bar->isSeekWaiting_, false))
    bar->seeking_.whileIdle([bar] { return bar->seekPieceOfText(); });
  if (std::exchange(bar->isCountWaiting_, false))
    bar->counting_.whileIdle([bar] { return bar->countPieceOfText(); }, G_PRIORITY_LOW);
}

bool FindBar::countPieceOfText() {
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(text_.get());
  const char* text = gtk_editable_get_text(GTK_EDITABLE(entry_));
  GtkTextIter from;
  gtk_text_buffer_get_iter_at_mark(buffer, &from, countedUpTo_.get());
  GtkTextIter limit = from;
  gtk_text_iter_forward_chars(&limit, kCharactersAPiece);
  if (!gtk_text_iter_is_end(&limit)) gtk_text_iter_forward_line(&limit);
  GtkTextIter next = from;
  for (int i = 0; i < kMatchesAPiece; ++i) {
    const auto match = findForward(from, text, &limit);
    if (match) ++matches_;
    next = match ? match->end : limit;
    if (!match) break;
    from = next;
  }
  const bool isMore = gtk_text_iter_is_end(&next) == FALSE;
  isCountWaiting_ = !isMore && !hasAllOfItsText(text_.get());
  if (isCountWaiting_) next = beforeTheEnd(from, longestMatch());
  gtk_text_buffer_move_mark(buffer, countedUpTo_.get(), &next);
  if (!isMore && !isCountWaiting_) gtk_text_buffer_delete_mark(buffer, countedUpTo_.get());
  // While more is to come, none so far is no answer.
  if (matches_ > 0 || !(isMore || isCountWaiting_)) showCount(matches_);
  return isMore;
}

void FindBar::showCount(unsigned count) {
  const std::string text = count > 0 ? trCount("find.count", count) : tr("find.none");
  gtk_label_set_text(GTK_LABEL(count_), text.c_str());
}

/// Whether the search is one of the document that is shown at the moment.
bool FindBar::isOfWhatIsShown() const {
  const ShownDocument shown = findTarget_().shown;
  return shown.page == page_.get() && (shown.page != nullptr || shown.text == text_.get());
}

void FindBar::documentChanged() {
  if (isOpen() && !isOfWhatIsShown()) searchAnew();
}

void FindBar::documentLoaded() {
  if (isOpen() && !text_) searchAnew();
}

void FindBar::documentCame() {
  if (isOpen() && isWaiting_) searchAnew();
}

void FindBar::step(Direction direction) {
  if (!isOpen()) return open();
  if (!isOfWhatIsShown()) return searchAnew();
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
  hasWrapped_ = isSeekWaiting_ = false;
  scrolling_.cancel();
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
  if (!match) return seekOn(from, limit);
  select(match->start, match->end);
  return false;
}

/// Where the match is on the page is known only once all lines before it are laid out, which the
/// toolkit does in steps, the first of them soon. Until then it scrolls by what it knows, so it is
/// asked again when those steps, which come before what is done while idle, are over.
void FindBar::select(const GtkTextIter& start, const GtkTextIter& end) {
  gtk_text_buffer_select_range(gtk_text_view_get_buffer(text_.get()), &start, &end);
  const auto scrollThere = [this] {
    gtk_text_view_scroll_to_mark(text_.get(),
                                 gtk_text_buffer_get_insert(gtk_text_view_get_buffer(text_.get())),
                                 kMarginOfMatch, FALSE, 0, 0);
    return false;
  };
  scrollThere();
  scrolling_.whileIdle(scrollThere);
}

/// Goes on at `limit`, between which and `from` there is no match. False when all has been looked
/// through, or all that is there.
bool FindBar::seekOn(const GtkTextIter& from, const GtkTextIter& limit) {
  const bool isForward = direction_ == Direction::Forward;
  const bool isAtEnd =
      (isForward ? gtk_text_iter_is_end(&limit) : gtk_text_iter_is_start(&limit)) != FALSE;
  if (isAtEnd) return wrapAround(from);
  GtkTextIter next = limit;
  if (!isForward) {
    // A match may begin before `limit` and end behind it.
    gtk_text_iter_forward_chars(&next, longestMatch());
    if (gtk_text_iter_compare(&next, &from) >= 0) next = limit;
  }
  gtk_text_buffer_move_mark(gtk_text_view_get_buffer(text_.get()), soughtUpTo_.get(), &next);
  return true;
}

/// Once from the other end, which is there when all of the text is.
bool FindBar::wrapAround(const GtkTextIter& from) {
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(text_.get());
  const bool isForward = direction_ == Direction::Forward;
  GtkTextIter next = from;
  isSeekWaiting_ = !hasAllOfItsText(text_.get());
  if (isSeekWaiting_) {
    if (isForward) next = beforeTheEnd(from, longestMatch());
  } else if (std::exchange(hasWrapped_, true)) {
    return false;
  } else if (isForward) {
    gtk_text_buffer_get_start_iter(buffer, &next);
  } else {
    gtk_text_buffer_get_end_iter(buffer, &next);
  }
  gtk_text_buffer_move_mark(buffer, soughtUpTo_.get(), &next);
  return !isSeekWaiting_;
}

}  // namespace lumisk::desktop
