#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <vector>

#include "desktop/frame_box.h"
#include "desktop/gref.h"
#include "desktop/web_view.h"
#include "platform/platform.h"
#include "ui/view.h"
#include "web/page_host.h"

// How a view value becomes widgets and stays in step with them.
//
// A tree of elements mirrors the tree of values, each with its widget. When a new value differs, an
// element of the same kind takes it up in place, so that a web view keeps its page and a scroll
// view its position; one of another kind is replaced. What an element shows can be read back from
// the widgets as a view value, so that the one outline describes both sides.

namespace lumisk::desktop {

/// What elements need from the program; borrowed by all of them.
struct RenderContext {
  const Platform& platform;
  DesktopWebViews& webViews;
};

/// Which way a stack runs: its dividers and spacers depend on it.
enum class Axis { None, Horizontal, Vertical };

/// The widget of one node, without the node's modifiers.
class NodeElement {
 public:
  NodeElement() = default;
  NodeElement(const NodeElement&) = delete;
  NodeElement& operator=(const NodeElement&) = delete;
  virtual ~NodeElement() = default;

  virtual GtkWidget* widget() const = 0;
  /// Shows `node`, which is of the same kind; false when that needs a new element all the same.
  virtual bool update(const ui::Node& node) = 0;
  /// What the widget shows.
  virtual ui::Node readBack() const = 0;
};

/// A view: its node's element, with a widget for each modifier around it.
class Element {
 public:
  Element(const ui::View& view, Axis axis, RenderContext& context);

  /// The outermost widget.
  GtkWidget* widget() const;
  /// False when the view differs too much; the element is then as it was, to be replaced.
  bool update(const ui::View& view);
  ui::View readBack() const;
  NodeElement& node() const { return *node_; }

 private:
  std::unique_ptr<NodeElement> node_;
  std::size_t kind_;
  std::vector<ui::Modifier> modifiers_;
  std::vector<GRef<GtkWidget>> wrappers_;  // innermost first
};

/// Shows `view` in `element`: in place if it can be, else in a new element. True in the second
/// case.
bool show(std::unique_ptr<Element>& element, const ui::View& view, Axis axis,
          RenderContext& context);

/// Whether a view takes all the room it can get.
Flexibility flexibilityOf(const ui::View& view, Axis axis);

}  // namespace lumisk::desktop
