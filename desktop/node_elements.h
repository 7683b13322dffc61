#pragma once

#include <memory>

#include "desktop/element.h"

namespace lumisk::desktop {

// One function a kind, each in the file of its kind.

std::unique_ptr<NodeElement> makeStack(const ui::VStack& stack, RenderContext& context);
std::unique_ptr<NodeElement> makeStack(const ui::HStack& stack, RenderContext& context);
std::unique_ptr<NodeElement> makeOverlay(const ui::Overlay& overlay, RenderContext& context);
std::unique_ptr<NodeElement> makeSpacer(const ui::Spacer& spacer, Axis axis);
std::unique_ptr<NodeElement> makeDivider(Axis axis);
std::unique_ptr<NodeElement> makeText(const ui::Text& text);
/// `pixelSize`: the side of the frame that a resizable image fills, or nothing.
std::unique_ptr<NodeElement> makeImage(const ui::Image& image, std::optional<int> pixelSize,
                                       RenderContext& context);
std::unique_ptr<NodeElement> makePicker(const ui::SegmentedPicker& picker);
std::unique_ptr<NodeElement> makeList(const ui::List& list, RenderContext& context);
std::unique_ptr<NodeElement> makeScrollView(const ui::ScrollView& scroll, RenderContext& context);
std::unique_ptr<NodeElement> makeProgressIndicator();
std::unique_ptr<NodeElement> makeWebPage(const ui::WebPage& page, RenderContext& context);

}  // namespace lumisk::desktop
