#include "desktop/live_view.h"

#include <memory>
#include <string_view>
#include <utility>

#include "desktop/beginning_first.h"
#include "desktop/curtain.h"
#include "desktop/host_scripts.h"

namespace lumisk::desktop {
namespace {

/// How long a process that is up may take to begin with a page before it counts as hung. It takes
/// milliseconds, or as long as the page before keeps it busy.
constexpr unsigned kPatience = 500;  // milliseconds

/// Where the empty page of a warm view stands: in the origin of the pages, so that the web process
/// that has everything compiled and cached stays.
constexpr const char* kBlankBase = "file:///";

/// The session's storage and the window's name belong to the view, not to the page. Run where a
/// page's first own script would run, because the page before may write until the moment it goes.
/// A site that a link led to keeps them: they are how its own pages hand on to each other, and the
/// next document does not get its view.
constexpr const char* kForgetScript = R"js(
  if (!location.protocol.startsWith('http')) {
    try { sessionStorage.clear(); } catch (e) {}
    window.name = '';
  }
)js";

int entriesBehind(WebKitWebView* view) {
  GList* entries =
      webkit_back_forward_list_get_back_list(webkit_web_view_get_back_forward_list(view));
  const auto count = static_cast<int>(g_list_length(entries));
  g_list_free(entries);
  return count;
}

/// The address of what the engine has taken up. The view's own URI is that of the latest request
/// from the moment of the request, while the engine may still be committing an earlier one; the
/// main resource is what came. Text that was handed over has no resource, so that it is none of
/// the host's pages from files when it comes late.
const char* committedAddress(WebKitWebView* view, std::string_view awaited) {
  WebKitWebResource* const resource = webkit_web_view_get_main_resource(view);
  if (resource != nullptr) return webkit_web_resource_get_uri(resource);
  const bool isPageOfFile = awaited.find('?') != std::string_view::npos;
  return isPageOfFile ? nullptr : webkit_web_view_get_uri(view);
}

/// Whether the engine, which may write an address in another form, means `awaited`: the number of
/// the load tells, where there is one.
bool isLoadOf(std::string_view uri, std::string_view awaited) {
  const std::size_t query = awaited.find('?');
  return query == std::string_view::npos ? uri == awaited : uri.ends_with(awaited.substr(query));
}

void call(const std::function<void()>& handler) {
  // A copy: the handler may put another in its place.
  if (const std::function<void()> copy = handler) copy();
}

}  // namespace

LiveView::LiveView(const WebEngine& engine, unsigned longestLag)
    : view_(engine.makeView()),
      curtain_(GRef<GtkWidget>::retain(curtainNew(view(), engine.isDrawnByCard()))),
      loadChanged_(view_.get(), "load-changed", G_CALLBACK(&LiveView::loadChanged), this),
      loadFailed_(view_.get(), "load-failed", G_CALLBACK(&LiveView::loadFailed), this),
      terminated_(view_.get(), "web-process-terminated", G_CALLBACK(&LiveView::terminated), this),
      decidePolicy_(view_.get(), "decide-policy", G_CALLBACK(&LiveView::decidePolicy), this),
      frame_(view()),
      longestLag_(longestLag) {
  runAtEachPage(webkit_web_view_get_user_content_manager(view()), kForgetScript);
}

/// The process would otherwise run on for as long as its page keeps it busy. Its end ends
/// loads; whoever waited for that has gone already.
LiveView::~LiveView() {
  detach();
  isEndedByHost_ = true;
  webkit_web_view_terminate_web_process(view());
}

void LiveView::detach() {
  onTakenUp = onFinished = onDrawn = onTerminated = onHistoryChanged = nullptr;
}

void LiveView::scrub() {
  frame_.forget();
  end_.cancel();
  detach();
  webkit_web_view_stop_loading(view());
  webkit_find_controller_search_finish(webkit_web_view_get_find_controller(view()));
  webkit_web_view_set_zoom_level(view(), 1.0);
  patience_.cancel();
  // Ends the document's scripts, timers and sounds, and lets go of its memory.
  webkit_web_view_load_html(view(), "", kBlankBase);
  awaited_ = kBlankBase;
  isScrubbed_ = true;
  hasOwnPage_ = false;
}

void LiveView::begin(const std::string& awaited, std::function<void()> start) {
  frame_.forget();
  end_.cancel();
  if (isScrubbed_ && firstSession_)
    webkit_web_view_restore_session_state(view(), firstSession_.get());
  isScrubbed_ = false;
  awaited_ = own_ = awaited;
  start_ = std::move(start);
  if (hasShownPage_) patience_.after(kPatience, [this] { startAgain(); });
  start_();
}

void LiveView::startAgain() {
  hasShownPage_ = false;
  isEndedByHost_ = true;
  webkit_web_view_terminate_web_process(view());
  isEndedByHost_ = false;
  start_();
}

void LiveView::load(const std::string& address) {
  begin(address, [this, address] { webkit_web_view_load_uri(view(), address.c_str()); });
}

void LiveView::loadText(std::string_view html, const char* baseUri) {
  const auto free = [](GBytes* bytes) { g_bytes_unref(bytes); };
  const std::shared_ptr<GBytes> bytes(g_bytes_new(html.data(), html.size()), free);
  begin(baseUri == nullptr ? "about:blank" : baseUri,
        [this, bytes, base = std::string(baseUri == nullptr ? "" : baseUri)] {
          webkit_web_view_load_bytes(view(), bytes.get(), "text/html", "UTF-8",
                                     base.empty() ? nullptr : base.c_str());
        });
}

void LiveView::print(GtkWindow* parent) {
  if (isPrinting()) return;
  showAll(view());
  printing_ = GRef<WebKitPrintOperation>::adopt(webkit_print_operation_new(view()));
  printed_ = std::make_unique<SignalHandler>(printing_.get(), "finished",
                                             G_CALLBACK(&LiveView::printed), this);
  const GRef<WebKitPrintOperation> operation = printing_;
  if (webkit_print_operation_run_dialog(operation.get(), parent) ==
      WEBKIT_PRINT_OPERATION_RESPONSE_CANCEL)
    printed(operation.get(), this);
}

void LiveView::printed(WebKitPrintOperation*, gpointer self) {
  auto* live = static_cast<LiveView*>(self);
  live->printing_ = {};
  call(live->onPrinted);
}

bool LiveView::isTakingUp() const {
  return hasShownPage_ && !awaited_.empty() && placementOf(view()).width > 0;
}

bool LiveView::canGoBack() const { return entriesBehind(view()) > entriesBefore_; }

void LiveView::loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self) {
  auto* live = static_cast<LiveView*>(self);
  switch (event) {
    case WEBKIT_LOAD_STARTED:
      live->hasFailed_ = false;
      break;
    case WEBKIT_LOAD_REDIRECTED:
      break;
    case WEBKIT_LOAD_COMMITTED:
      live->committed();
      break;
    case WEBKIT_LOAD_FINISHED:
      live->finished();
      break;
  }
}

/// FALSE: the engine's own error page may show where a link led to nothing.
gboolean LiveView::loadFailed(WebKitWebView*, WebKitLoadEvent, const char*, GError*,
                              gpointer self) {
  static_cast<LiveView*>(self)->hasFailed_ = true;
  return FALSE;
}

void LiveView::terminated(WebKitWebView*, WebKitWebProcessTerminationReason, gpointer self) {
  auto* live = static_cast<LiveView*>(self);
  if (live->isEndedByHost_) return;
  live->end_.cancel();
  live->isDead_ = true;
  call(live->onTerminated);
}

/// The history begins with the pages of other documents, which a page's script could go back to:
/// the file of the page is this document's by now, and what was left out of the first one for want
/// of a diagram would be missing in it.
gboolean LiveView::decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                WebKitPolicyDecisionType type, gpointer self) {
  auto* live = static_cast<LiveView*>(self);
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
    // The second and last of the engine's questions, unless an earlier page is meant.
    WebKitURIRequest* const request =
        webkit_response_policy_decision_get_request(WEBKIT_RESPONSE_POLICY_DECISION(decision));
    if (live->isTakingUp() && isLoadOf(webkit_uri_request_get_uri(request), live->awaited_))
      call(live->onTakenUp);
  }
  if (type != WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION) return FALSE;
  WebKitNavigationAction* const action = webkit_navigation_policy_decision_get_navigation_action(
      WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  const std::string_view target =
      webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
  if (target.starts_with("http")) live->meetSite();
  const std::string_view page = target.substr(0, target.find('#'));
  if (!isPageAddress(page) || isLoadOf(page, live->own_)) return FALSE;
  webkit_policy_decision_ignore(decision);
  return TRUE;
}

/// What the site keeps of the visit is forgotten with the document.
void LiveView::meetSite() {
  if (std::exchange(isLedToSite_, true)) return;
  WebEngine::acceptCookies(view());
}

void LiveView::committed() {
  const char* const uri = committedAddress(view(), awaited_);
  if (uri == nullptr) return;
  if (!awaited_.empty()) {
    if (!isLoadOf(uri, awaited_)) return;  // a late word of the load before
    awaited_.clear();
    patience_.cancel();
    start_ = nullptr;
    hasShownPage_ = true;
    hasOwnPage_ = !isScrubbed_;
    entriesBefore_ = entriesBehind(view());
    if (!firstSession_) firstSession_.reset(webkit_web_view_get_session_state(view()));
    if (onDrawn) frame_.await([this] { drawn(); });
    call(onTakenUp);
  } else {
    hasLeftDocument_ = true;
  }
  call(onHistoryChanged);
}

/// What is told of the end changes the window, and would have it drawn just before the page can be.
void LiveView::finished() {
  if (std::exchange(hasFailed_, false) || !awaited_.empty()) return;
  if (!frame_.isAwaited() || end_.isPending()) return call(onFinished);
  end_.after(longestLag_, [this] { call(onFinished); });
}

/// Both before the window is drawn again. The second is a task of its own, because whoever hears of
/// the first may end the view.
void LiveView::drawn() {
  if (!end_.isPending()) return call(onDrawn);
  end_.after(0, [this] { call(onDrawn); });
  call(onFinished);
}

std::unique_ptr<LiveView> LiveViews::take() {
  patience_.cancel();
  warmingUp_.cancel();
  if (warm_ && warm_->isFit()) return std::move(warm_);
  warm_.reset();
  return std::make_unique<LiveView>(engine_);
}

void LiveViews::warmUp() {
  if (!warm_) giveBack(std::make_unique<LiveView>(engine_));
}

/// At once it would be in the way of the next document, which comes in the same turn when a person
/// walks on.
void LiveViews::warmUpSoon() {
  warmingUp_.after(0, [this] { warmUp(); });
}

void LiveViews::giveBack(std::unique_ptr<LiveView> view) {
  if (view->hasMetSites()) {
    // The kept one belongs to the same session.
    warm_.reset();
    engine_.forgetSites();
  }
  if (view->isPrinting()) return keepUntilPrinted(std::move(view));
  if (!view->isFit()) {
    view.reset();
    return warmUpSoon();
  }
  if (warm_) return;
  view->scrub();
  warm_ = std::move(view);
  if (warm_->hasShownPage()) patience_.after(kPatience, [this] { dropIfBusy(); });
}

/// Scrubbed or ended, it would print an empty page, and the engine expects it to be there.
void LiveViews::keepUntilPrinted(std::unique_ptr<LiveView> view) {
  view->detach();
  view->onPrinted = [this] {
    // It is still calling.
    printed_.after(0, [this] {
      std::erase_if(printing_, [](const auto& kept) { return !kept->isPrinting(); });
    });
  };
  printing_.push_back(std::move(view));
  warmUpSoon();
}

void LiveViews::dropIfBusy() {
  if (!warm_ || warm_->isScrubbed()) return;
  warm_.reset();
  warmUp();
}

}  // namespace lumisk::desktop
