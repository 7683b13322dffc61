#pragma once

#include <memory>

#include "desktop/element.h"

namespace lumisk::desktop {

/// A web page and its web view, which stays as long as the node keeps its place.
class WebPageElement final : public NodeElement {
 public:
  WebPageElement(ui::WebPage page, RenderContext& context);
  WebPageElement(const WebPageElement&) = delete;
  WebPageElement& operator=(const WebPageElement&) = delete;
  ~WebPageElement() override;

  GtkWidget* widget() const override { return bin_.get(); }
  bool update(const ui::Node& node) override;
  ui::Node readBack() const override { return page_; }

  DesktopWebView& webView() const { return static_cast<DesktopWebView&>(host_->webView()); }

 private:
  RenderContext& context_;
  ui::WebPage page_;
  GRef<GtkWidget> bin_;
  std::unique_ptr<PageHost> host_;
};

}  // namespace lumisk::desktop
