#include "desktop/web_view.h"

#include <string>
#include <utility>

#include "desktop/beginning_first.h"
#include "desktop/curtain.h"
#include "desktop/diagram_mention.h"
#include "desktop/script_value.h"

namespace lumisk::desktop {
namespace {

/// From here on the engine needs some hundred megabytes for a page, and longer than for the start
/// of another process.
constexpr std::uint64_t kLargeItem = std::uint64_t{2} * 1024 * 1024;  // bytes

}  // namespace

DesktopWebView::DesktopWebView(DesktopWebViews& owner, const WebViewConfiguration& configuration)
    : owner_(owner),
      live_(owner.liveViews_.take()),
      focus_(webkit_web_view_get_user_content_manager(live_->view())) {
  owner_.latest_ = this;
  if (owner_.isLarge_) live_->setLarge();
  connect(configuration);
  live_->onFinished = [this] {
    DesktopWebViews& views = owner_;
    if (delegate_ != nullptr) delegate_->didFinishNavigation();
    if (views.onFinished) views.onFinished();
  };
  live_->onTakenUp = [this] {
    if (owner_.onTakenUp) owner_.onTakenUp();
  };
  live_->onDrawn = [this] {
    setCurtainClosed(view(), false);
    if (owner_.latest_ == this && owner_.onDrawn) owner_.onDrawn();
  };
  live_->onTerminated = [this] {
    if (owner_.onTerminated) owner_.onTerminated();
  };
  live_->onHistoryChanged = [this] {
    if (owner_.onHistoryChanged) owner_.onHistoryChanged();
  };
}

DesktopWebView::~DesktopWebView() {
  if (owner_.latest_ == this) owner_.latest_ = nullptr;
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view());
  for (const auto& registration : registrations_)
    webkit_user_content_manager_unregister_script_message_handler(
        manager, registration->name.c_str(), nullptr);
  registrations_.clear();
  setCurtainClosed(view(), false);
  owner_.liveViews_.giveBack(std::move(live_));
}

void DesktopWebView::connect(const WebViewConfiguration& configuration) {
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view());
  for (const auto& [name, handler] : configuration.userContentController.scriptMessageHandlers) {
    // First the signal, then the handler: a message between the two would be lost.
    const std::string signal = "script-message-received::" + name;
    auto made = std::make_unique<Registration>(Registration{*live_, name, handler, nullptr});
    made->received = std::make_unique<SignalHandler>(
        manager, signal.c_str(), G_CALLBACK(&DesktopWebView::received), made.get());
    webkit_user_content_manager_register_script_message_handler(manager, name.c_str(), nullptr);
    registrations_.push_back(std::move(made));
  }
}

/// The page of the document before may post until it goes, and finds the handler by the same name.
void DesktopWebView::received(WebKitUserContentManager*, JSCValue* value, gpointer registration) {
  const auto* to = static_cast<const Registration*>(registration);
  if (to->live.hasOwnPage()) to->handler->didReceiveScriptMessage(scriptMessageBody(value));
}

void DesktopWebView::setDrawsBackground(bool drawsBackground) {
  const GdkRGBA colour = drawsBackground ? GdkRGBA{1, 1, 1, 1} : GdkRGBA{0, 0, 0, 0};
  webkit_web_view_set_background_color(view(), &colour);
}

void DesktopWebView::setNavigationDelegate(NavigationDelegate& delegate) { delegate_ = &delegate; }

void DesktopWebView::loadFileURL(const FileURL& url, const FileURL& /*readAccessURL*/) {
  // The engine lets a page that comes from a file show images from the whole disk.
  hideUntilDrawn();
  live_->load(pageAddress(url.absoluteString(), owner_.nextLoad()));
}

void DesktopWebView::loadHTMLString(const ui::SharedText& html,
                                    const std::optional<FileURL>& baseURL) {
  hideUntilDrawn();
  const std::string base = baseURL ? std::string(baseURL->absoluteString()) : std::string();
  live_->loadText(html.view(), baseURL ? base.c_str() : nullptr);
}

/// The view still holds the picture of what it showed before, also after the engine has taken up
/// the page; the window's colour stands in until there is another.
void DesktopWebView::hideUntilDrawn() {
  focus_.forget();
  setCurtainClosed(view(), true);
}

bool DesktopWebView::isToBeDrawn() const { return isCurtainClosed(view()); }

std::unique_ptr<WebView> DesktopWebViews::makeWebView(const WebViewConfiguration& configuration) {
  return std::make_unique<DesktopWebView>(*this, configuration);
}

void DesktopWebViews::expect(std::uint64_t bytes) {
  isLarge_ = bytes >= kLargeItem;
  prepared_.reset();
}

std::optional<WrittenPage> DesktopWebViews::takeWritten(const ui::SharedText& page) {
  // The same text in the same memory: one that was built again is another, and not to be compared.
  if (!prepared_ || prepared_->html.data() != page.data()) return std::nullopt;
  std::optional<WrittenPage> file(std::move(prepared_->file));
  prepared_.reset();
  return file;
}

void DesktopWebViews::announce(const ui::SharedText& page) {
  diagrams_ = diagramsIn(page.view());
  const bool isCode = !diagrams_;
  showing_ = isCode ? showingOfCode(page.view().size()) : Showing::AtOnce;
}

PageLoad DesktopWebViews::nextLoad() {
  static std::uint64_t lastNumber = 0;  // never the same twice in a program
  return {++lastNumber, diagrams_.value_or(Diagrams::Possible), showing_};
}

}  // namespace lumisk::desktop
