#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/first_frame.h"
#include "desktop/gref.h"
#include "desktop/web_engine.h"

namespace lumisk::desktop {

/// One of WebKit's views with its web process, used for one document after another.
///
/// A fresh view costs more than a second before its first page is complete; one that has shown a
/// page before costs a fifth of that. So views are used again: `scrub` ends the document and takes
/// out its zoom and find, the next load its history, and each page begins by forgetting what the
/// page before left in the session's storage and the window's name. What cannot be taken out makes
/// the view unfit: a page that it was led to by a link may have left anything in its own origin,
/// and a dead web process has to be started anew.
class LiveView {
 public:
  /// The end of a load waits so long for the page's first frame, which takes as long where the page
  /// is large or the machine busy; a page that is not seen has none.
  static constexpr unsigned kLongestLag = 300;  // milliseconds

  explicit LiveView(const WebEngine& engine, unsigned longestLag = kLongestLag);
  LiveView(const LiveView&) = delete;
  LiveView& operator=(const LiveView&) = delete;
  ~LiveView();

  WebKitWebView* view() const { return view_.get(); }
  /// The view behind its curtain (`curtain.h`), to be put into a window.
  GtkWidget* widget() const { return curtain_.get(); }

  /// Whether the next document may have this view.
  bool isFit() const { return !isDead_ && !hasMetSites() && !isLarge_; }
  /// To be told when the document is a large one: its process keeps gigabytes, which go with it.
  void setLarge() { isLarge_ = true; }
  /// Whether the view has come to a page of the document that has it now. Until then what happens
  /// in it is still the earlier document's.
  bool hasOwnPage() const { return hasOwnPage_; }
  /// Whether a link led it elsewhere, or a frame of the document shows what lies elsewhere.
  bool hasMetSites() const { return hasLeftDocument_ || isLedToSite_; }
  /// Puts an empty page in the document's place. `isScrubbed` is true once it is there, which a
  /// document whose script never ends holds up for ever.
  void scrub();
  bool isScrubbed() const { return isScrubbed_ && awaited_.empty(); }
  /// Whether the web process has shown a page, so that the next needs no more than a moment.
  bool hasShownPage() const { return hasShownPage_; }

  /// Asks the person how to print the page, and prints it. Returns when they have answered; what
  /// the main loop does meanwhile may give the view back, but not destroy it.
  void print(GtkWindow* parent);
  /// From the question to the last sheet.
  bool isPrinting() const { return static_cast<bool>(printing_); }
  /// Lets go of all that is told of the page.
  void detach();

  /// Starts a load of the host's own; what the view goes to by itself after that counts as leaving.
  /// A process that was used before and does not take the page up is busy with an earlier one for
  /// good: it is ended, and the page goes to another.
  void load(const std::string& address);
  void loadText(std::string_view html, const char* baseUri);
  /// Whether a process that is up has still to take up the host's page, in a view that has had a
  /// size: a page that begins in one without finds it to be 0.
  bool isTakingUp() const;
  /// Whether there is a page of this document to go back to.
  bool canGoBack() const;

  /// The engine has taken up the host's page, or needs no more answers to do so. Told once or
  /// twice; a text that was handed over is not asked about.
  std::function<void()> onTakenUp;
  /// A navigation finished, the load of the host's or a later one, and did not fail. The first is
  /// told just before `onDrawn` where that follows soon, and not at all where another load takes
  /// its place before.
  std::function<void()> onFinished;
  /// The view shows the host's page, and no longer the picture of what was there before.
  std::function<void()> onDrawn;
  /// The web process ended by itself.
  std::function<void()> onTerminated;
  /// What can be gone back to has changed.
  std::function<void()> onHistoryChanged;
  /// Printing is over, or was given up.
  std::function<void()> onPrinted;

 private:
  static void loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self);
  static gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, const char*, GError*, gpointer self);
  static void terminated(WebKitWebView*, WebKitWebProcessTerminationReason, gpointer self);
  static gboolean decidePolicy(WebKitWebView*, WebKitPolicyDecision*, WebKitPolicyDecisionType,
                               gpointer self);
  static void printed(WebKitPrintOperation*, gpointer self);
  void begin(const std::string& awaited, std::function<void()> start);
  void startAgain();
  void meetSite();
  void committed();
  void finished();
  void drawn();

  struct FreeSession {
    void operator()(WebKitWebViewSessionState* state) const {
      webkit_web_view_session_state_unref(state);
    }
  };

  GRef<WebKitWebView> view_;
  GRef<GtkWidget> curtain_;
  SignalHandler loadChanged_;
  SignalHandler loadFailed_;
  SignalHandler terminated_;
  SignalHandler decidePolicy_;
  FirstFrame frame_;
  GRef<WebKitPrintOperation> printing_;
  std::unique_ptr<SignalHandler> printed_;
  /// The address of the host's load that has not been committed yet, empty afterwards.
  std::string awaited_;
  /// The address of the host's latest load.
  std::string own_;
  /// The history as it was after the view's first page: restoring it forgets all that came later.
  std::unique_ptr<WebKitWebViewSessionState, FreeSession> firstSession_;
  /// How many entries of the history lie before this document's own.
  int entriesBefore_ = 0;
  /// Starts the host's load, once more if need be.
  std::function<void()> start_;
  Deferred patience_;
  unsigned longestLag_;
  /// Tells of the end of the load, and what is told with it.
  Deferred end_;
  bool isScrubbed_ = false;
  bool hasOwnPage_ = false;
  bool hasShownPage_ = false;
  bool isLarge_ = false;
  bool isEndedByHost_ = false;
  bool hasFailed_ = false;
  bool isDead_ = false;
  bool hasLeftDocument_ = false;
  bool isLedToSite_ = false;
};

/// Keeps at most one view warm while no document uses it.
class LiveViews {
 public:
  explicit LiveViews(WebEngine& engine) : engine_(engine) {}

  /// The warm view if there is one, else a fresh one.
  std::unique_ptr<LiveView> take();
  /// Keeps the view for the next document if it is fit; if not, another is made warm soon.
  void giveBack(std::unique_ptr<LiveView> view);
  /// Has a warm view from now on, though there was no document yet.
  void warmUp();
  bool hasWarmView() const { return static_cast<bool>(warm_); }

 private:
  void warmUpSoon();
  void keepUntilPrinted(std::unique_ptr<LiveView> view);
  void dropIfBusy();

  WebEngine& engine_;
  std::unique_ptr<LiveView> warm_;
  /// Views that no preview has any more, but a printer still does.
  std::vector<std::unique_ptr<LiveView>> printing_;
  Deferred printed_;
  Deferred patience_;
  Deferred warmingUp_;
};

}  // namespace lumisk::desktop
