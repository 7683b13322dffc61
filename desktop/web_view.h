#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "desktop/live_view.h"
#include "desktop/page_focus.h"
#include "desktop/web_extension/page_address.h"
#include "web/page_file.h"
#include "web/web_view.h"

namespace lumisk::desktop {

class DesktopWebViews;

/// A page and the file that was written of it.
struct PreparedPage {
  ui::SharedText html;
  WrittenPage file;
};

/// The engine's view for one web page of a body.
class DesktopWebView final : public WebView {
 public:
  DesktopWebView(DesktopWebViews& owner, const WebViewConfiguration& configuration);
  DesktopWebView(const DesktopWebView&) = delete;
  DesktopWebView& operator=(const DesktopWebView&) = delete;
  ~DesktopWebView() override;

  void setDrawsBackground(bool drawsBackground) override;
  void setNavigationDelegate(NavigationDelegate& delegate) override;
  void loadFileURL(const FileURL& url, const FileURL& readAccessURL) override;
  void loadHTMLString(const ui::SharedText& html, const std::optional<FileURL>& baseURL) override;

  WebKitWebView* view() const { return live_->view(); }
  GtkWidget* widget() const { return live_->widget(); }
  bool canGoBack() const { return live_->canGoBack(); }
  bool isTakingUp() const { return live_->isTakingUp(); }
  bool isToBeDrawn() const;
  PageFocus focus() const { return focus_.focus(); }
  void print(GtkWindow* parent) const { live_->print(parent); }

 private:
  struct Registration {
    const LiveView& live;
    std::string name;
    ScriptMessageHandler* handler;
    std::unique_ptr<SignalHandler> received;
  };
  static void received(WebKitUserContentManager*, JSCValue* value, gpointer registration);
  void connect(const WebViewConfiguration& configuration);
  void hideUntilDrawn();

  DesktopWebViews& owner_;
  std::unique_ptr<LiveView> live_;
  PageFocusWatch focus_;
  NavigationDelegate* delegate_ = nullptr;
  std::vector<std::unique_ptr<Registration>> registrations_;
};

/// Makes the web views of one window, and tells the window of what happens in them that is no
/// business of a page's owner.
class DesktopWebViews final : public WebViewFactory {
 public:
  explicit DesktopWebViews(LiveViews& liveViews) : liveViews_(liveViews) {}

  std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override;

  /// Tells how large the item is that is shown next. To be called before its pages are made.
  void expect(std::uint64_t bytes);
  /// Has a view started that the item can have once it is ready.
  void warmUp() { liveViews_.warmUp(); }
  /// Hands over a page of that item that has been written already.
  void offer(PreparedPage page) { prepared_.emplace(std::move(page)); }
  /// The file that was written of this page, for its first load.
  std::optional<WrittenPage> takeWritten(const ui::SharedText& page);
  /// Tells what the page that is loaded next can make use of. To be called before each load.
  void announce(const ui::SharedText& page);

  /// Whether the latest web view was led elsewhere by a link.
  bool canGoBack() const { return latest_ != nullptr && latest_->canGoBack(); }

  /// Whether the latest web view waits for an engine that is warm to take its page up, a matter of
  /// milliseconds. `onTakenUp` tells when it is about to.
  bool isTakingUp() const { return latest_ != nullptr && latest_->isTakingUp(); }

  /// Whether nothing of the latest web view's page is to be seen yet. `onDrawn` tells when there
  /// is.
  bool isToBeDrawn() const { return latest_ != nullptr && latest_->isToBeDrawn(); }

  /// What has the focus in the latest web view.
  PageFocus focus() const { return latest_ == nullptr ? PageFocus::None : latest_->focus(); }

  /// Lets the person print the latest web view's page, if there is one.
  void print(GtkWindow* parent) const {
    if (latest_ != nullptr) latest_->print(parent);
  }

  WebKitWebView* latestView() const { return latest_ == nullptr ? nullptr : latest_->view(); }

  std::function<void()> onTakenUp;
  std::function<void()> onDrawn;
  std::function<void()> onFinished;
  std::function<void()> onTerminated;
  std::function<void()> onHistoryChanged;

 private:
  friend class DesktopWebView;
  PageLoad nextLoad();

  LiveViews& liveViews_;
  DesktopWebView* latest_ = nullptr;
  bool isLarge_ = false;
  std::optional<PreparedPage> prepared_;
  std::optional<Diagrams> diagrams_;
  Showing showing_ = Showing::AtOnce;
};

}  // namespace lumisk::desktop
