#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "ui/view.h"

namespace lumisk::test {

/// `outline` with PAGE for length and digest of a page of `pageLength` bytes, which are no layout.
std::string withoutPageContent(const std::string& outline, std::size_t pageLength);

/// Expects the outline of `view` to be the file of this name in tests/expected, but for the page.
void expectOutline(const ui::View& view, std::string_view name, std::size_t pageLength);

/// The nodes of one kind in `view`, from the top down.
template <typename Kind>
void collect(const ui::View& view, std::vector<Kind>& found) {
  const auto collectAll = [&](const std::vector<ui::View>& views) {
    for (const ui::View& child : views) collect(child, found);
  };
  if (const auto* node = std::get_if<Kind>(&view.node)) found.push_back(*node);
  if (const auto* stack = std::get_if<ui::VStack>(&view.node)) collectAll(stack->children);
  if (const auto* stack = std::get_if<ui::HStack>(&view.node)) collectAll(stack->children);
  if (const auto* overlay = std::get_if<ui::Overlay>(&view.node)) collectAll(overlay->children);
  if (const auto* scroll = std::get_if<ui::ScrollView>(&view.node))
    collect(*scroll->content, found);
}

/// The only node of its kind in `view`.
template <typename Kind>
Kind only(const ui::View& view) {
  std::vector<Kind> found;
  collect(view, found);
  EXPECT_EQ(found.size(), 1U);
  return found.at(0);
}

/// Presses the segment with this tag.
inline void press(const ui::View& view, const std::string& tag) {
  only<ui::SegmentedPicker>(view).onSelect(tag);
}

}  // namespace lumisk::test
