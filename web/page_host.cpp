#include "web/page_host.h"

#include <utility>

#include "web/html_preview_view.h"

namespace lumisk {

PageHost::PageHost(const ui::WebPage& page, WebViewFactory& factory, const CachesDirectory& caches,
                   std::optional<WrittenPage> written)
    : caches_(caches), page_(page) {
  const HTMLPreviewView view = htmlPreviewView(page);
  coordinator_ = view.makeCoordinator();
  webView_ = view.makeWebView(factory, *coordinator_);
  if (written) {
    view.updateWebView(*webView_, *std::move(written));
  } else {
    view.updateWebView(*webView_, caches_);
  }
}

void PageHost::update(const ui::WebPage& page) {
  if (page == page_) return;
  page_ = page;
  reload();
}

void PageHost::reload() { htmlPreviewView(page_).updateWebView(*webView_, caches_); }

}  // namespace lumisk
