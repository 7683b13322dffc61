#pragma once

#include <functional>
#include <memory>

#include "desktop/element.h"
#include "ui/hosted_view.h"

namespace lumisk::desktop {

/// A hosted view on screen: keeps the widgets in step with the view's state.
class HostedWidget {
 public:
  /// When the view appears: with this object, or it has already.
  enum class Appearing { Now, Already };

  /// `view` and `context` are borrowed.
  HostedWidget(ui::HostedView& view, RenderContext& context, Appearing appearing = Appearing::Now);
  HostedWidget(const HostedWidget&) = delete;
  HostedWidget& operator=(const HostedWidget&) = delete;
  ~HostedWidget();

  GtkWidget* widget() const { return bin_.get(); }
  /// What the widgets show.
  ui::View readBack() const { return element_->readBack(); }
  /// The value that they were last told to show.
  const ui::View& body() const { return *body_; }

  /// The widgets show another value than before.
  std::function<void()> onChanged;

 private:
  void viewChanged();

  ui::HostedView& view_;
  RenderContext& context_;
  GRef<GtkWidget> bin_;
  std::optional<ui::View> body_;
  std::unique_ptr<Element> element_;
  bool isDrawing_ = false;
  bool hasChanged_ = false;
};

}  // namespace lumisk::desktop
