#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/platform.h"
#include "web/web_view.h"

namespace lumisk::test {

/// What web views were asked for, one line each, in order.
using WebLog = std::vector<std::string>;

/// A web view that shows nothing and writes down what it is told.
class RecordingWebView final : public WebView {
 public:
  explicit RecordingWebView(WebLog& log) : log_(log) {}
  ~RecordingWebView() override { log_.emplace_back("gone"); }

  void setDrawsBackground(bool drawsBackground) override {
    log_.push_back(std::string("drawsBackground ") + (drawsBackground ? "yes" : "no"));
  }
  void setNavigationDelegate(NavigationDelegate& delegate) override {
    navigationDelegate = &delegate;
    log_.emplace_back("navigationDelegate");
  }
  void loadFileURL(const FileURL& url, const FileURL& readAccessURL) override {
    log_.push_back("load " + url.absoluteString() + " reading " + readAccessURL.absoluteString());
    if (onLoadFile) onLoadFile(url);
  }
  void loadHTMLString(const ui::SharedText& html, const std::optional<FileURL>& baseURL) override {
    log_.push_back("load text \"" + std::string(html.view()) + "\" " +
                   (baseURL ? "base " + baseURL->absoluteString() : "without base"));
  }

  NavigationDelegate* navigationDelegate = nullptr;
  std::function<void(const FileURL&)> onLoadFile;

 private:
  WebLog& log_;
};

/// Makes such web views, and keeps an eye on the last one.
class RecordingWebViewFactory final : public WebViewFactory {
 public:
  std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& given) override {
    configuration = given;
    std::string line = "make";
    for (const auto& registration : given.userContentController.scriptMessageHandlers) {
      line += " handler " + registration.name;
    }
    line += given.defaultWebpagePreferences.allowsContentJavaScript ? " scripts" : " no scripts";
    log.push_back(line);
    auto made = std::make_unique<RecordingWebView>(log);
    webView = made.get();
    return made;
  }

  /// Posts `body` to the one handler, as page script would.
  void post(const ScriptMessageBody& body) const {
    configuration.userContentController.scriptMessageHandlers.at(0)
        .handler->didReceiveScriptMessage(body);
  }

  WebLog log;
  WebViewConfiguration configuration;
  RecordingWebView* webView = nullptr;
};

/// A caches directory of the test's choice.
struct FixedCachesDirectory final : CachesDirectory {
  explicit FixedCachesDirectory(std::optional<std::string> fixedPath)
      : given(std::move(fixedPath)) {}
  std::optional<std::string> path() const override { return given; }
  std::optional<std::string> given;
};

}  // namespace lumisk::test
