#include "desktop/hosted_widget.h"

#include <adwaita.h>

#include <utility>

namespace lumisk::desktop {

HostedWidget::HostedWidget(ui::HostedView& view, RenderContext& context, Appearing appearing)
    : view_(view), context_(context), bin_(GRef<GtkWidget>::retain(adw_bin_new())) {
  isDrawing_ = true;  // nothing is to be drawn before the view has appeared
  view_.setOnChange([this] { viewChanged(); });
  if (appearing == Appearing::Now) view_.onAppear();
  isDrawing_ = false;
  viewChanged();
}

HostedWidget::~HostedWidget() {
  view_.setOnChange({});
  adw_bin_set_child(ADW_BIN(bin_.get()), nullptr);
}

/// A change may be reported while the last one is being drawn; it is then drawn after that.
void HostedWidget::viewChanged() {
  hasChanged_ = true;
  if (isDrawing_) return;
  isDrawing_ = true;
  bool isAnother = false;
  while (std::exchange(hasChanged_, false)) {
    ui::View next = view_.body();
    if (body_ && next == *body_) {
      body_ = std::move(next);
      continue;
    }
    if (show(element_, next, Axis::None, context_))
      adw_bin_set_child(ADW_BIN(bin_.get()), element_->widget());
    body_ = std::move(next);
    isAnother = true;
  }
  isDrawing_ = false;
  if (isAnother && onChanged) onChanged();
}

}  // namespace lumisk::desktop
