#include "desktop/web_page_element.h"

#include <adwaita.h>

#include <utility>

#include "desktop/accessible_name.h"
#include "desktop/node_elements.h"
#include "desktop/texts.h"

namespace lumisk::desktop {

WebPageElement::WebPageElement(ui::WebPage page, RenderContext& context)
    : context_(context), page_(std::move(page)), bin_(GRef<GtkWidget>::retain(adw_bin_new())) {
  context_.webViews.announce(page_.htmlContent);
  host_ = std::make_unique<PageHost>(page_, context_.webViews, context_.platform.caches,
                                     context_.webViews.takeWritten(page_.htmlContent));
  setAccessibleName(GTK_WIDGET(webView().view()), tr("panel.page"));
  adw_bin_set_child(ADW_BIN(bin_.get()), webView().widget());
}

// The web view outlives this element where another page takes it over.
WebPageElement::~WebPageElement() { adw_bin_set_child(ADW_BIN(bin_.get()), nullptr); }

bool WebPageElement::update(const ui::Node& node) {
  const auto& page = std::get<ui::WebPage>(node);
  if (page == page_) return true;
  page_ = page;
  context_.webViews.announce(page_.htmlContent);
  host_->update(page_);
  return true;
}

std::unique_ptr<NodeElement> makeWebPage(const ui::WebPage& page, RenderContext& context) {
  return std::make_unique<WebPageElement>(page, context);
}

}  // namespace lumisk::desktop
