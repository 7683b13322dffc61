#pragma once

#include <memory>
#include <optional>

#include "platform/platform.h"
#include "ui/view.h"
#include "web/coordinator.h"
#include "web/page_file.h"
#include "web/web_view.h"

namespace lumisk {

/// One web page on screen: the coordinator and the web view that were made for its node, which
/// live exactly as long as the node keeps its place in the tree.
class PageHost {
 public:
  /// Makes both and loads the page, from `written` if that was made of it already. `factory` is
  /// used here only; `caches` is borrowed.
  PageHost(const ui::WebPage& page, WebViewFactory& factory, const CachesDirectory& caches,
           std::optional<WrittenPage> written = std::nullopt);

  /// Loads the page again when it differs from the one that was loaded last, and only then: a view
  /// is built anew after every change of its state, and most changes are none of the page.
  void update(const ui::WebPage& page);
  /// Loads the latest page again, changed or not.
  void reload();

  WebView& webView() { return *webView_; }
  Coordinator& coordinator() { return *coordinator_; }

 private:
  const CachesDirectory& caches_;
  ui::WebPage page_;
  // The web view reports to the coordinator, so it goes first.
  std::unique_ptr<Coordinator> coordinator_;
  std::unique_ptr<WebView> webView_;
};

}  // namespace lumisk
