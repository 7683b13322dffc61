#include "web/html_preview_view.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "web/coordinator.h"

namespace lumisk {

namespace {

// The pages post to `window.webkit.messageHandlers.lumisk`.
constexpr const char* kMessageHandlerName = "lumisk";

// A page may name files anywhere.
constexpr std::string_view kReadAccessPath = "/";

std::string requiredCachesDirectory(const CachesDirectory& caches) {
  std::optional<std::string> path = caches.path();
  if (!path) {
    std::fputs("lumisk: there is no caches directory to keep the page in\n", stderr);
    std::abort();
  }
  return *std::move(path);
}

}  // namespace

ui::View HTMLPreviewView::body() const {
  return ui::WebPage{htmlContent, baseURL, onCheckboxToggle, onLoad};
}

std::unique_ptr<Coordinator> HTMLPreviewView::makeCoordinator() const {
  return std::make_unique<Coordinator>(*this);
}

std::unique_ptr<WebView> HTMLPreviewView::makeWebView(WebViewFactory& factory,
                                                      Coordinator& coordinator) const {
  UserContentController userContentController;
  userContentController.addScriptMessageHandler(coordinator, kMessageHandlerName);
  WebViewConfiguration configuration;
  configuration.userContentController = std::move(userContentController);
  WebpagePreferences preferences;
  preferences.allowsContentJavaScript = true;
  configuration.defaultWebpagePreferences = preferences;

  std::unique_ptr<WebView> webView = factory.makeWebView(configuration);
  webView->setDrawsBackground(false);
  webView->setNavigationDelegate(coordinator);
  return webView;
}

void HTMLPreviewView::updateWebView(WebView& webView, const CachesDirectory& caches) const {
  load(webView, writePageFile(requiredCachesDirectory(caches), htmlContent.view()));
}

void HTMLPreviewView::updateWebView(WebView& webView, WrittenPage page) const {
  load(webView, page.putInPlace());
}

void HTMLPreviewView::load(WebView& webView, const std::optional<FileURL>& pageFile) const {
  if (pageFile) {
    webView.loadFileURL(*pageFile, FileURL::fromPath(kReadAccessPath));
  } else {
    webView.loadHTMLString(htmlContent, baseURL);
  }
}

HTMLPreviewView htmlPreviewView(const ui::WebPage& page) {
  return {page.htmlContent, page.baseURL, page.onCheckboxToggle, page.onLoad};
}

}  // namespace lumisk
