#include <algorithm>

#include "desktop/element.h"

namespace lumisk::desktop {
namespace {

Flexibility either(Flexibility a, Flexibility b) {
  return {a.horizontal || b.horizontal, a.vertical || b.vertical};
}

Flexibility ofAny(const std::vector<ui::View>& views, Axis axis) {
  Flexibility result;
  for (const ui::View& view : views) result = either(result, flexibilityOf(view, axis));
  return result;
}

/// By the node alone.
struct NodeFlexibility {
  Axis axis;

  Flexibility operator()(const ui::VStack& stack) const {
    return ofAny(stack.children, Axis::Vertical);
  }
  Flexibility operator()(const ui::HStack& stack) const {
    return ofAny(stack.children, Axis::Horizontal);
  }
  Flexibility operator()(const ui::Overlay& overlay) const {
    return ofAny(overlay.children, Axis::None);
  }
  Flexibility operator()(const ui::Spacer&) const {
    return {axis != Axis::Vertical, axis != Axis::Horizontal};
  }
  Flexibility operator()(const ui::Divider&) const {
    return {axis == Axis::Vertical, axis == Axis::Horizontal};
  }
  Flexibility operator()(const ui::Text&) const { return {}; }
  Flexibility operator()(const ui::Image& image) const {
    return {image.isResizable, image.isResizable};
  }
  Flexibility operator()(const ui::SegmentedPicker&) const { return {}; }
  Flexibility operator()(const ui::List&) const { return {true, true}; }
  Flexibility operator()(const ui::ScrollView&) const { return {true, true}; }
  Flexibility operator()(const ui::ProgressIndicator&) const { return {}; }
  Flexibility operator()(const ui::WebPage&) const { return {true, true}; }
};

struct ModifiedFlexibility {
  Flexibility inner;

  Flexibility operator()(const ui::Padding&) const { return inner; }
  Flexibility operator()(const ui::Background&) const { return inner; }
  Flexibility operator()(const ui::Opacity&) const { return inner; }
  Flexibility operator()(const ui::FixedSize&) const { return {}; }
  Flexibility operator()(const ui::Frame& frame) const {
    return {!frame.width && (inner.horizontal || frame.maxWidth.has_value()),
            !frame.height && inner.vertical};
  }
};

}  // namespace

Flexibility flexibilityOf(const ui::View& view, Axis axis) {
  Flexibility result = std::visit(NodeFlexibility{axis}, view.node);
  for (const ui::Modifier& modifier : view.modifiers)
    result = std::visit(ModifiedFlexibility{result}, modifier);
  return result;
}

}  // namespace lumisk::desktop
