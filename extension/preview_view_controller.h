#pragma once

#include <array>
#include <memory>
#include <vector>

#include "core/file_url.h"
#include "extension/completion.h"
#include "extension/dispatch.h"
#include "platform/platform.h"
#include "ui/hosted_view.h"
#include "ui/modifier.h"

namespace lumisk {

enum class Anchor { Leading, Trailing, Top, Bottom };

/// An edge of a hosted view that stands on an edge of the root surface, `constant` points away.
struct EdgeConstraint {
  Anchor hosted;
  Anchor root;
  double constant = 0;
  bool operator==(const EdgeConstraint&) const = default;
};

/// What a hosted view is held by: it fills the root surface exactly and changes size with it.
inline constexpr std::array<EdgeConstraint, 4> kFillRoot = {{
    {Anchor::Leading, Anchor::Leading},
    {Anchor::Trailing, Anchor::Trailing},
    {Anchor::Top, Anchor::Top},
    {Anchor::Bottom, Anchor::Bottom},
}};

/// A view that the controller holds, and how it lies on the root surface.
struct HostedChild {
  ui::HostedView view;
  std::array<EdgeConstraint, 4> constraints = kFillRoot;
};

/// What everything else lies on: plain, and to be seen while a preview loads.
struct RootSurface {
  /// To be looked up once, when the surface is made: it does not follow the appearance afterwards.
  ui::BackgroundRole background = ui::BackgroundRole::Window;
};

/// The extension as a host sees it: a root surface, and on it the view of the item that was asked
/// for. It knows no window; whoever makes it draws its children, the last one on top.
///
/// One controller serves one request. A second one stacks a second view over the first; nothing is
/// taken away. Main thread only.
class PreviewViewController {
 public:
  /// `platform` is borrowed, beyond this object's end too where a view's work is still under way.
  explicit PreviewViewController(const Platform& platform) : platform_(platform) {}
  PreviewViewController(const PreviewViewController&) = delete;
  PreviewViewController& operator=(const PreviewViewController&) = delete;
  ~PreviewViewController() = default;

  /// Prepares the preview of the item at `url`. By the time this returns the completion has been
  /// called, after the view was embedded or, with an error, with nothing embedded.
  void preparePreviewOfFile(const FileURL& url, const Completion& completion);

  /// The same for a file that `prepareFile` has read already.
  void takePreparedFile(FilePreview preview, const Completion& completion);

  /// Makes `view` the visible content, on top of what is there.
  void embed(ui::HostedView view);

  const RootSurface& rootSurface() const { return rootSurface_; }
  /// In the order in which they were embedded. A child's address holds for the controller's life.
  const std::vector<std::unique_ptr<HostedChild>>& children() const { return children_; }

 private:
  const Platform& platform_;
  RootSurface rootSurface_;
  std::vector<std::unique_ptr<HostedChild>> children_;
};

}  // namespace lumisk
