#include "views/mode_bar.h"

#include <utility>

namespace lumisk {

namespace {

constexpr double kPickerPadding = 8;
// A little of what lies behind shows through.
constexpr double kBarOpacity = 0.95;
// Strip, line and document touch.
constexpr double kSpacing = 0;

}  // namespace

ui::View modePicker(std::vector<ui::Segment> segments, std::string_view selection,
                    ui::Action<const std::string&> onSelect) {
  return ui::SegmentedPicker{.label = {},
                             .segments = std::move(segments),
                             .selection = std::string(selection),
                             .onSelect = std::move(onSelect)};
}

ui::View withModePickerPadding(ui::View picker) {
  return std::move(picker)
      .with(ui::Padding{ui::Edges::Horizontal, kPickerPadding})
      .with(ui::Padding{ui::Edges::Vertical, kPickerPadding});
}

ui::View modeBar(std::vector<ui::View> children) {
  return ui::View(ui::HStack{.alignment = ui::VerticalAlignment::Center,
                             .spacing = std::nullopt,
                             .children = std::move(children)})
      .with(ui::Background{.role = ui::BackgroundRole::Window,
                           .opacity = kBarOpacity,
                           .extendsUnderSafeAreas = true});
}

ui::View underModeBar(ui::View bar, ui::View content) {
  return ui::VStack{.alignment = ui::HorizontalAlignment::Center,
                    .spacing = kSpacing,
                    .children = {std::move(bar), ui::Divider{}, std::move(content)}};
}

}  // namespace lumisk
