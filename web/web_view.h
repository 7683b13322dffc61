#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/file_url.h"
#include "ui/shared_text.h"
#include "web/script_message.h"

namespace lumisk {

/// Told what a web view's page does. Everything here happens on the main thread.
class NavigationDelegate {
 public:
  virtual ~NavigationDelegate() = default;
  /// A navigation of the web view has finished: a load, or one that began inside the page.
  virtual void didFinishNavigation() = 0;
};

class ScriptMessageHandler {
 public:
  virtual ~ScriptMessageHandler() = default;
  /// Page script posted `body` under the name that this handler is registered for.
  virtual void didReceiveScriptMessage(const ScriptMessageBody& body) = 0;
};

/// The handlers of a web view's `window.webkit.messageHandlers`, by name.
struct UserContentController {
  struct Registration {
    std::string name;
    ScriptMessageHandler* handler;
  };
  std::vector<Registration> scriptMessageHandlers;

  void addScriptMessageHandler(ScriptMessageHandler& handler, std::string name) {
    scriptMessageHandlers.push_back({std::move(name), &handler});
  }
};

struct WebpagePreferences {
  bool allowsContentJavaScript = false;
};

/// What a web view is made with. The handlers are borrowed and outlive the web view.
struct WebViewConfiguration {
  UserContentController userContentController;
  WebpagePreferences defaultWebpagePreferences;
};

/// An engine that shows a page. It makes no decisions: every navigation is allowed and happens
/// in the view itself.
class WebView {
 public:
  WebView() = default;
  WebView(const WebView&) = delete;
  WebView& operator=(const WebView&) = delete;
  virtual ~WebView() = default;

  /// Whether it paints a background of its own under the page's.
  virtual void setDrawsBackground(bool drawsBackground) = 0;
  /// The delegate is borrowed and outlives the web view.
  virtual void setNavigationDelegate(NavigationDelegate& delegate) = 0;
  /// Loads the page in the file at `url`, which may read every file below `readAccessURL`. Takes
  /// the place of a load in progress, as does the other.
  virtual void loadFileURL(const FileURL& url, const FileURL& readAccessURL) = 0;
  /// Loads the page from text; relative references resolve against `baseURL`, if there is one.
  virtual void loadHTMLString(const ui::SharedText& html,
                              const std::optional<FileURL>& baseURL) = 0;
};

class WebViewFactory {
 public:
  virtual ~WebViewFactory() = default;
  /// A web view without a size of its own. Never null.
  virtual std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) = 0;
};

}  // namespace lumisk
