#include <utility>

#include "desktop/node_elements.h"

// The kinds that hold other views: both stacks and the overlay.

namespace lumisk::desktop {
namespace {

/// Room between the parts of a stack that states none.
constexpr int kUsualSpacing = 12;

GtkAlign toAlign(ui::HorizontalAlignment alignment) {
  switch (alignment) {
    case ui::HorizontalAlignment::Leading:
      return GTK_ALIGN_START;
    case ui::HorizontalAlignment::Center:
      return GTK_ALIGN_CENTER;
    case ui::HorizontalAlignment::Trailing:
      return GTK_ALIGN_END;
  }
  return GTK_ALIGN_FILL;
}

GtkAlign toAlign(ui::VerticalAlignment alignment) {
  switch (alignment) {
    case ui::VerticalAlignment::Top:
      return GTK_ALIGN_START;
    case ui::VerticalAlignment::Center:
      return GTK_ALIGN_CENTER;
    case ui::VerticalAlignment::Bottom:
      return GTK_ALIGN_END;
  }
  return GTK_ALIGN_FILL;
}

/// The alignment that a child stands by; nothing when it fills its place.
template <typename Alignment>
std::optional<Alignment> readAlignment(GtkAlign align, Alignment start, Alignment end) {
  if (align == GTK_ALIGN_START) return start;
  if (align == GTK_ALIGN_END) return end;
  return align == GTK_ALIGN_CENTER ? std::optional(Alignment::Center) : std::nullopt;
}

std::optional<ui::HorizontalAlignment> alignmentOf(const ui::VStack&, GtkWidget* child) {
  using enum ui::HorizontalAlignment;
  return readAlignment(gtk_widget_get_halign(child), Leading, Trailing);
}

std::optional<ui::VerticalAlignment> alignmentOf(const ui::HStack&, GtkWidget* child) {
  using enum ui::VerticalAlignment;
  return readAlignment(gtk_widget_get_valign(child), Top, Bottom);
}

int spacingInPixels(const ui::Spacing& spacing) {
  return spacing ? static_cast<int>(*spacing) : kUsualSpacing;
}

/// What the two stacks differ in.
struct StackTraits {
  GtkOrientation orientation;
  Axis axis;
};
constexpr StackTraits traitsOf(const ui::VStack&) {
  return {GTK_ORIENTATION_VERTICAL, Axis::Vertical};
}
constexpr StackTraits traitsOf(const ui::HStack&) {
  return {GTK_ORIENTATION_HORIZONTAL, Axis::Horizontal};
}

template <typename Stack>
class StackElement final : public NodeElement {
 public:
  StackElement(const Stack& stack, RenderContext& context)
      : context_(context),
        box_(GRef<GtkWidget>::retain(gtk_box_new(traitsOf(stack).orientation, 0))),
        shown_(stack) {
    showStack(stack);
  }

  GtkWidget* widget() const override { return box_.get(); }
  bool update(const ui::Node& node) override {
    showStack(std::get<Stack>(node));
    return true;
  }
  ui::Node readBack() const override {
    Stack stack;
    stack.alignment = shown_.alignment;  // where all children fill their places
    for (const auto& child : children_)
      if (const auto alignment = alignmentOf(stack, child->widget())) stack.alignment = *alignment;
    const int spacing = gtk_box_get_spacing(GTK_BOX(box_.get()));
    if (shown_.spacing || spacing != kUsualSpacing) stack.spacing = spacing;
    for (const auto& child : children_) stack.children.push_back(child->readBack());
    return stack;
  }

 private:
  void showStack(const Stack& stack) {
    gtk_box_set_spacing(GTK_BOX(box_.get()), spacingInPixels(stack.spacing));
    const std::size_t count = stack.children.size();
    while (children_.size() > count) {
      gtk_box_remove(GTK_BOX(box_.get()), children_.back()->widget());
      children_.pop_back();
    }
    for (std::size_t i = 0; i < count; ++i) showChild(stack, i);
    shown_ = stack;
  }

  void showChild(const Stack& stack, std::size_t index) {
    const ui::View& view = stack.children[index];
    const Axis axis = traitsOf(stack).axis;
    if (index == children_.size()) children_.emplace_back();
    const auto old =
        GRef<GtkWidget>::retain(children_[index] ? children_[index]->widget() : nullptr);
    if (show(children_[index], view, axis, context_)) {
      GtkWidget* sibling = index == 0 ? nullptr : children_[index - 1]->widget();
      if (old) gtk_box_remove(GTK_BOX(box_.get()), old.get());
      gtk_box_insert_child_after(GTK_BOX(box_.get()), children_[index]->widget(), sibling);
    }
    align(stack, children_[index]->widget(), flexibilityOf(view, axis));
  }

  static void align(const ui::VStack& stack, GtkWidget* child, Flexibility flexibility) {
    gtk_widget_set_halign(child,
                          flexibility.horizontal ? GTK_ALIGN_FILL : toAlign(stack.alignment));
  }
  static void align(const ui::HStack& stack, GtkWidget* child, Flexibility flexibility) {
    gtk_widget_set_valign(child, flexibility.vertical ? GTK_ALIGN_FILL : toAlign(stack.alignment));
  }

  RenderContext& context_;
  GRef<GtkWidget> box_;
  Stack shown_;
  std::vector<std::unique_ptr<Element>> children_;
};

/// The first child decides the size, the others lie over it in its middle.
class OverlayElement final : public NodeElement {
 public:
  OverlayElement(const ui::Overlay& overlay, RenderContext& context)
      : context_(context), overlay_(GRef<GtkWidget>::retain(gtk_overlay_new())) {
    showOverlay(overlay);
  }

  GtkWidget* widget() const override { return overlay_.get(); }
  bool update(const ui::Node& node) override {
    showOverlay(std::get<ui::Overlay>(node));
    return true;
  }
  ui::Node readBack() const override {
    ui::Overlay overlay;
    for (const auto& child : children_) overlay.children.push_back(child->readBack());
    return overlay;
  }

 private:
  void showOverlay(const ui::Overlay& overlay) {
    while (children_.size() > overlay.children.size()) {
      remove(children_.back()->widget(), children_.size() - 1);
      children_.pop_back();
    }
    for (std::size_t i = 0; i < overlay.children.size(); ++i) showChild(overlay.children[i], i);
  }

  void showChild(const ui::View& view, std::size_t index) {
    if (index == children_.size()) children_.emplace_back();
    const auto old =
        GRef<GtkWidget>::retain(children_[index] ? children_[index]->widget() : nullptr);
    if (show(children_[index], view, Axis::None, context_)) {
      if (old) remove(old.get(), index);
      add(children_[index]->widget(), index);
    }
    const Flexibility flexibility = flexibilityOf(view, Axis::None);
    GtkWidget* child = children_[index]->widget();
    gtk_widget_set_halign(child, flexibility.horizontal ? GTK_ALIGN_FILL : GTK_ALIGN_CENTER);
    gtk_widget_set_valign(child, flexibility.vertical ? GTK_ALIGN_FILL : GTK_ALIGN_CENTER);
  }

  void add(GtkWidget* child, std::size_t index) {
    if (index == 0) {
      gtk_overlay_set_child(GTK_OVERLAY(overlay_.get()), child);
      return;
    }
    gtk_overlay_add_overlay(GTK_OVERLAY(overlay_.get()), child);
    gtk_overlay_set_measure_overlay(GTK_OVERLAY(overlay_.get()), child, TRUE);
    gtk_overlay_set_clip_overlay(GTK_OVERLAY(overlay_.get()), child, TRUE);
    // A replaced child is the last one now; those above it follow.
    for (std::size_t above = index + 1; above < children_.size(); ++above) {
      if (!children_[above]) continue;
      GtkWidget* sibling = children_[above]->widget();
      g_object_ref(sibling);
      gtk_overlay_remove_overlay(GTK_OVERLAY(overlay_.get()), sibling);
      gtk_overlay_add_overlay(GTK_OVERLAY(overlay_.get()), sibling);
      g_object_unref(sibling);
    }
  }

  void remove(GtkWidget* child, std::size_t index) {
    if (index == 0)
      gtk_overlay_set_child(GTK_OVERLAY(overlay_.get()), nullptr);
    else
      gtk_overlay_remove_overlay(GTK_OVERLAY(overlay_.get()), child);
  }

  RenderContext& context_;
  GRef<GtkWidget> overlay_;
  std::vector<std::unique_ptr<Element>> children_;
};

}  // namespace

std::unique_ptr<NodeElement> makeStack(const ui::VStack& stack, RenderContext& context) {
  return std::make_unique<StackElement<ui::VStack>>(stack, context);
}

std::unique_ptr<NodeElement> makeStack(const ui::HStack& stack, RenderContext& context) {
  return std::make_unique<StackElement<ui::HStack>>(stack, context);
}

std::unique_ptr<NodeElement> makeOverlay(const ui::Overlay& overlay, RenderContext& context) {
  return std::make_unique<OverlayElement>(overlay, context);
}

}  // namespace lumisk::desktop
