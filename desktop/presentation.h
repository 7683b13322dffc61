#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "core/error_record.h"
#include "desktop/hosted_widget.h"
#include "desktop/preparation.h"
#include "extension/preview_view_controller.h"

namespace lumisk::desktop {

/// One answered request: the extension's controller, its root surface and the views on it.
class Presentation {
 public:
  /// Asks for the item at once. `context` is borrowed.
  Presentation(const FileURL& url, RenderContext& context);
  /// Shows what was made ready on another thread.
  Presentation(PreparedPreview prepared, RenderContext& context);
  Presentation(const Presentation&) = delete;
  Presentation& operator=(const Presentation&) = delete;
  ~Presentation();

  /// The root surface.
  GtkWidget* widget() const { return root_.get(); }
  const std::optional<ErrorRecord>& error() const { return error_; }
  /// The view on top; null when the request failed.
  const HostedWidget* content() const;
  const ui::HostedView* view() const;

  /// The view on top shows something else than before, another mode perhaps.
  std::function<void()> onChanged;

  /// Chooses the mode of this name; false when there is none.
  bool selectMode(std::string_view name) const;

 private:
  explicit Presentation(RenderContext& context);
  void showChildren(RenderContext& context, HostedWidget::Appearing appearing);
  void paintRoot();

  PreviewViewController controller_;
  GRef<GtkWidget> root_;
  std::optional<ErrorRecord> error_;
  std::vector<std::unique_ptr<HostedWidget>> contents_;
};

/// What in a widget tree the person looks at and the panel's keys work on; a view may hold several,
/// of which all but one are transparent.
struct ShownDocument {
  WebKitWebView* page = nullptr;
  GtkTextView* text = nullptr;
  /// What scrolls when it is not a web page.
  GtkScrolledWindow* scrolled = nullptr;
};
ShownDocument findShownDocument(GtkWidget* root);

/// The engine's view has a text view inside, which only translates keys; Tab is to pass by it, or
/// would be caught there.
void keepFocusOutOfHelpers(WebKitWebView* page);

}  // namespace lumisk::desktop
