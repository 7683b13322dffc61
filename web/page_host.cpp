#include "web/page_host.h"

#include "web/html_preview_view.h"

namespace lumisk {

PageHost::PageHost(const ui::WebPage& page, WebViewFactory& factory, const CachesDirectory& caches)
    : caches_(caches), page_(page) {
  const HTMLPreviewView view = htmlPreviewView(page);
  coordinator_ = view.makeCoordinator();
  webView_ = view.makeWebView(factory, *coordinator_);
  view.updateWebView(*webView_, caches_);
}

void PageHost::update(const ui::WebPage& page) {
  if (page == page_) return;
  page_ = page;
  reload();
}

void PageHost::reload() { htmlPreviewView(page_).updateWebView(*webView_, caches_); }

}  // namespace lumisk
