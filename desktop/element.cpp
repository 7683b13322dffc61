#include "desktop/element.h"

#include <algorithm>

#include "desktop/node_elements.h"
#include "desktop/style.h"

namespace lumisk::desktop {
namespace {

/// The side of the frame around a view, for the image that fills it.
std::optional<int> frameSide(const ui::View& view) {
  for (const ui::Modifier& modifier : view.modifiers) {
    const auto* frame = std::get_if<ui::Frame>(&modifier);
    if (frame != nullptr && frame->width && frame->height)
      return static_cast<int>(std::min(*frame->width, *frame->height));
  }
  return std::nullopt;
}

struct NodeMaker {
  const ui::View& view;
  Axis axis;
  RenderContext& context;

  using Made = std::unique_ptr<NodeElement>;
  Made operator()(const ui::VStack& stack) const { return makeStack(stack, context); }
  Made operator()(const ui::HStack& stack) const { return makeStack(stack, context); }
  Made operator()(const ui::Overlay& overlay) const { return makeOverlay(overlay, context); }
  Made operator()(const ui::Spacer& spacer) const { return makeSpacer(spacer, axis); }
  Made operator()(const ui::Divider&) const { return makeDivider(axis); }
  Made operator()(const ui::Text& text) const { return makeText(text); }
  Made operator()(const ui::Image& image) const {
    return makeImage(image, image.isResizable ? frameSide(view) : std::nullopt, context);
  }
  Made operator()(const ui::SegmentedPicker& picker) const { return makePicker(picker); }
  Made operator()(const ui::List& list) const { return makeList(list, context); }
  Made operator()(const ui::ScrollView& scroll) const { return makeScrollView(scroll, context); }
  Made operator()(const ui::ProgressIndicator&) const { return makeProgressIndicator(); }
  Made operator()(const ui::WebPage& page) const { return makeWebPage(page, context); }
};

/// What is not seen takes no click and no key and does not exist for a screen reader; but it keeps
/// its place, and a web page its process and its scroll position.
void setOpacity(GtkWidget* widget, double opacity) {
  const bool isSeen = opacity > 0;
  const bool holdsFocus = (gtk_widget_get_state_flags(widget) & GTK_STATE_FLAG_FOCUS_WITHIN) != 0;
  if (!isSeen && holdsFocus) gtk_root_set_focus(gtk_widget_get_root(widget), nullptr);
  gtk_widget_set_opacity(widget, opacity);
  gtk_widget_set_can_target(widget, isSeen);
  gtk_widget_set_can_focus(widget, isSeen);
  gtk_accessible_update_state(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_STATE_HIDDEN, !isSeen, -1);
}

struct ModifierSetter {
  GtkWidget* box;

  void operator()(const ui::Padding& padding) const { frameBoxSetPadding(box, padding); }
  void operator()(const ui::Frame& frame) const { frameBoxSetFrame(box, frame); }
  void operator()(const ui::Background& background) const { setBackground(box, background); }
  void operator()(const ui::Opacity& opacity) const { setOpacity(box, opacity.opacity); }
  void operator()(const ui::FixedSize&) const { frameBoxSetFixedSize(box); }
};

struct ModifierReader {
  GtkWidget* box;

  ui::Modifier operator()(const ui::Padding&) const { return frameBoxPadding(box); }
  ui::Modifier operator()(const ui::Frame&) const { return frameBoxFrame(box); }
  ui::Modifier operator()(const ui::Background&) const { return backgroundOf(box); }
  ui::Modifier operator()(const ui::Opacity&) const {
    return ui::Opacity{gtk_widget_get_opacity(box)};
  }
  ui::Modifier operator()(const ui::FixedSize&) const { return ui::FixedSize{}; }
};

bool haveSameKinds(const std::vector<ui::Modifier>& a, const std::vector<ui::Modifier>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& x, const auto& y) { return x.index() == y.index(); });
}

}  // namespace

Element::Element(const ui::View& view, Axis axis, RenderContext& context)
    : node_(std::visit(NodeMaker{view, axis, context}, view.node)),
      kind_(view.node.index()),
      modifiers_(view.modifiers) {
  ui::View inner = view;
  inner.modifiers.clear();
  for (const ui::Modifier& modifier : view.modifiers) {
    GtkWidget* box = frameBoxNew(widget(), flexibilityOf(inner, axis));
    wrappers_.push_back(GRef<GtkWidget>::retain(box));
    std::visit(ModifierSetter{box}, modifier);
    inner.modifiers.push_back(modifier);
  }
  const Flexibility flexibility = flexibilityOf(view, axis);
  gtk_widget_set_hexpand(widget(), flexibility.horizontal);
  gtk_widget_set_vexpand(widget(), flexibility.vertical);
}

GtkWidget* Element::widget() const {
  return wrappers_.empty() ? node_->widget() : wrappers_.back().get();
}

bool Element::update(const ui::View& view) {
  if (view.node.index() != kind_ || !haveSameKinds(view.modifiers, modifiers_)) return false;
  if (!node_->update(view.node)) return false;
  for (std::size_t i = 0; i < modifiers_.size(); ++i) {
    if (view.modifiers[i] == modifiers_[i]) continue;
    std::visit(ModifierSetter{wrappers_[i].get()}, view.modifiers[i]);
    modifiers_[i] = view.modifiers[i];
  }
  return true;
}

ui::View Element::readBack() const {
  ui::View view =
      std::visit([](auto node) { return ui::View(std::move(node)); }, node_->readBack());
  for (std::size_t i = 0; i < modifiers_.size(); ++i)
    view.modifiers.push_back(std::visit(ModifierReader{wrappers_[i].get()}, modifiers_[i]));
  return view;
}

bool show(std::unique_ptr<Element>& element, const ui::View& view, Axis axis,
          RenderContext& context) {
  if (element && element->update(view)) return false;
  // First the old one goes: a web page of the new one can then have its web view.
  element.reset();
  element = std::make_unique<Element>(view, axis, context);
  return true;
}

}  // namespace lumisk::desktop
