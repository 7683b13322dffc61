#include "extension/mode_selection.h"

#include <algorithm>
#include <variant>

namespace lumisk {

namespace {

const ui::SegmentedPicker* pickerIn(const ui::View& view);

const ui::SegmentedPicker* pickerInAny(const std::vector<ui::View>& views) {
  for (const ui::View& view : views) {
    if (const auto* picker = pickerIn(view)) return picker;
  }
  return nullptr;
}

struct PickerFinder {
  using Found = const ui::SegmentedPicker*;
  Found operator()(const ui::VStack& stack) const { return pickerInAny(stack.children); }
  Found operator()(const ui::HStack& stack) const { return pickerInAny(stack.children); }
  Found operator()(const ui::Overlay& overlay) const { return pickerInAny(overlay.children); }
  Found operator()(const ui::Spacer& /*spacer*/) const { return nullptr; }
  Found operator()(const ui::Divider& /*divider*/) const { return nullptr; }
  Found operator()(const ui::Text& /*text*/) const { return nullptr; }
  Found operator()(const ui::Image& /*image*/) const { return nullptr; }
  Found operator()(const ui::SegmentedPicker& picker) const { return &picker; }
  Found operator()(const ui::List& /*list*/) const { return nullptr; }
  Found operator()(const ui::ScrollView& scroll) const { return pickerIn(*scroll.content); }
  Found operator()(const ui::ProgressIndicator& /*indicator*/) const { return nullptr; }
  Found operator()(const ui::WebPage& /*page*/) const { return nullptr; }
};

const ui::SegmentedPicker* pickerIn(const ui::View& view) {
  return std::visit(PickerFinder{}, view.node);
}

// "source" of "preview.mode.source".
std::string_view lastComponent(std::string_view tag) {
  const std::size_t dot = tag.rfind('.');
  return dot == std::string_view::npos ? tag : tag.substr(dot + 1);
}

bool answersTo(std::string_view tag, std::string_view name) {
  const std::string_view own = lastComponent(tag);
  return name == tag || name == own || (own == "source" && name == "text");
}

}  // namespace

std::vector<std::string> modeNames(const ui::View& body) {
  std::vector<std::string> names;
  if (const auto* picker = pickerIn(body)) {
    for (const ui::Segment& segment : picker->segments) {
      names.emplace_back(lastComponent(segment.tag));
    }
  }
  return names;
}

bool selectMode(const ui::View& body, std::string_view name) {
  const auto* picker = pickerIn(body);
  if (!picker) return false;
  const auto answers = [&](const ui::Segment& segment) { return answersTo(segment.tag, name); };
  const auto found = std::ranges::find_if(picker->segments, answers);
  if (found == picker->segments.end()) return false;
  picker->onSelect(found->tag);
  return true;
}

}  // namespace lumisk
