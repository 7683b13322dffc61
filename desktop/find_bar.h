#pragma once

#include <functional>
#include <memory>
#include <string>

#include "desktop/presentation.h"

namespace lumisk::desktop {

/// What there is to look through.
struct FindTarget {
  ShownDocument shown;
  /// There is none, but there will be: `documentCame` tells when.
  bool isComing = false;
  bool hasText() const { return shown.page != nullptr || shown.text != nullptr || isComing; }
};

/// Finds text in what is shown, page or plain text, without regard to case, and counts the matches.
class FindBar {
 public:
  /// `findTarget` tells what there is at the moment.
  explicit FindBar(std::function<FindTarget()> findTarget);
  FindBar(const FindBar&) = delete;
  FindBar& operator=(const FindBar&) = delete;
  ~FindBar();

  GtkWidget* widget() const { return bar_.get(); }
  bool isOpen() const;
  bool hasFocus() const;
  /// Does nothing where there is no text to look through, nor is to come.
  void open();
  /// Closes it and takes the marks out of the document.
  void close();
  /// Another document may be shown in the place of the one before: another mode's, for one.
  /// Searches it, if the bar is open and it is another.
  void documentChanged();
  /// The document is another, though in the same widget: a page that was loaded. A source text that
  /// is shown beside it stays what it is.
  void documentLoaded();
  /// What was still to come is there. Searches it, if somebody has waited for that.
  void documentCame();
  void next() { step(Direction::Forward); }
  void previous() { step(Direction::Backward); }
  /// What stands there about the matches: "17 matches".
  std::string countText() const;

 private:
  enum class Direction { Forward, Backward };
  void buildBar();
  void searchAnew();
  bool isOfWhatIsShown() const;
  void searchPage(WebKitWebView* page, const char* text);
  void searchText(GtkTextView* view);
  void step(Direction direction);
  void stepInText(Direction direction);
  bool seekPieceOfText();
  bool seekOn(const GtkTextIter& from, const GtkTextIter& limit);
  bool wrapAround(const GtkTextIter& from);
  void select(const GtkTextIter& start, const GtkTextIter& end);
  bool countPieceOfText();
  /// How far a match may reach.
  int longestMatch() const;
  GRef<GtkTextMark> newMark(const GtkTextIter& at) const;
  void forgetMark(GRef<GtkTextMark>& mark) const;
  void showCount(unsigned count);
  void forgetTarget();

  static void counted(WebKitFindController*, unsigned count, gpointer self);
  static void textGrew(GtkTextBuffer*, gpointer self);

  std::function<FindTarget()> findTarget_;
  GRef<GtkWidget> bar_;
  GtkWidget* entry_ = nullptr;
  GtkWidget* count_ = nullptr;
  bool isWaiting_ = false;
  GRef<WebKitWebView> page_;
  GRef<GtkTextView> text_;
  std::unique_ptr<SignalHandler> counted_;
  Deferred counting_;
  GRef<GtkTextMark> countedUpTo_;
  unsigned matches_ = 0;
  Deferred seeking_;
  Deferred scrolling_;
  GRef<GtkTextMark> soughtUpTo_;
  Direction direction_ = Direction::Forward;
  bool hasWrapped_ = false;
  /// Both have come to the end of a text that is still being filled in.
  bool isSeekWaiting_ = false;
  bool isCountWaiting_ = false;
  std::unique_ptr<SignalHandler> textGrew_;
};

}  // namespace lumisk::desktop
