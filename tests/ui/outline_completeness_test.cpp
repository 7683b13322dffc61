// Nothing that a layout states is left out of its outline: whatever field of whatever node is
// changed, the outline changes too.

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/vector_row_source.h"
#include "ui/outline.h"
#include "ui/view.h"

namespace lumisk::ui {
namespace {

using test::VectorRowSource;

constexpr std::size_t kLong = 3 * kOutlineTextLimit;

template <typename Kind>
using Changes = std::vector<std::function<void(Kind&)>>;

// One list of changes a kind. Each first takes its kind apart into as many names as it has fields,
// so that a new field does not compile until there is a change for it here.

Changes<VStack> changesOf(const VStack& stack) {
  [[maybe_unused]] const auto& [alignment, spacing, children] = stack;
  return {[](VStack& s) { s.alignment = HorizontalAlignment::Leading; },
          [](VStack& s) { s.alignment = HorizontalAlignment::Trailing; },
          [](VStack& s) { s.spacing = 0; },
          [](VStack& s) { s.spacing = 7.25; },
          [](VStack& s) { s.children.push_back(Divider{}); },
          [](VStack& s) { s.children.insert(s.children.begin(), Spacer{}); }};
}

Changes<HStack> changesOf(const HStack& stack) {
  [[maybe_unused]] const auto& [alignment, spacing, children] = stack;
  return {[](HStack& s) { s.alignment = VerticalAlignment::Top; },
          [](HStack& s) { s.alignment = VerticalAlignment::Bottom; },
          [](HStack& s) { s.spacing = 0; }, [](HStack& s) { s.spacing = 7.25; },
          [](HStack& s) { s.children.push_back(Divider{}); }};
}

Changes<Overlay> changesOf(const Overlay& overlay) {
  [[maybe_unused]] const auto& [children] = overlay;
  return {[](Overlay& o) { o.children.push_back(Divider{}); },
          [](Overlay& o) { o.children.insert(o.children.begin(), Divider{}); }};
}

Changes<Spacer> changesOf(const Spacer& spacer) {
  [[maybe_unused]] const auto& [minLength] = spacer;
  return {[](Spacer& s) { s.minLength = 0; }, [](Spacer& s) { s.minLength = 7.25; }};
}

Changes<Divider> changesOf(const Divider&) { return {}; }

/// A text of the same beginning and length as every other one made here.
std::string longText(char last) { return std::string(kLong, 'x') + last; }

Changes<Text> changesOf(const Text& text) {
  [[maybe_unused]] const auto& [words, font, foreground, isSelectable, lineLimit] = text;
  [[maybe_unused]] const auto& [size, design, weight] = font;
  return {[](Text& t) { t.text = "other"; },
          [](Text& t) { t.text = longText('a'); },
          [](Text& t) { t.text = longText('b'); },
          [](Text& t) { t.font.size = TextStyle::Headline; },
          [](Text& t) { t.font.size = TextStyle::Caption; },
          [](Text& t) { t.font.size = 7.25; },
          [](Text& t) { t.font.design = FontDesign::Monospaced; },
          [](Text& t) { t.font.weight = FontWeight::Bold; },
          [](Text& t) { t.foreground = ForegroundRole::Secondary; },
          [](Text& t) { t.isSelectable = true; },
          [](Text& t) { t.lineLimit = 1; },
          [](Text& t) { t.lineLimit = 2; }};
}

Changes<Image> changesOf(const Image& image) {
  [[maybe_unused]] const auto& [source, isResizable] = image;
  return {[](Image& i) { i.source = NamedIcon{"other"}; },
          [](Image& i) { i.source = FileIcon{"other"}; },
          [](Image& i) { i.source = FileIcon{"\xFF"}; }, [](Image& i) { i.isResizable = true; }};
}

Changes<SegmentedPicker> changesOf(const SegmentedPicker& picker) {
  [[maybe_unused]] const auto& [label, segments, selection, onSelect] = picker;
  [[maybe_unused]] const auto& [tag, title] = Segment{};
  return {[](SegmentedPicker& p) { p.label = "other"; },
          [](SegmentedPicker& p) {
            p.segments.push_back({"c", "C"});
          },
          [](SegmentedPicker& p) { p.segments.at(0).tag = "other"; },
          [](SegmentedPicker& p) { p.segments.at(0).title = "other"; },
          [](SegmentedPicker& p) { p.selection = "b"; },
          [](SegmentedPicker& p) { p.onSelect = [](const std::string&) {}; }};
}

Changes<List> changesOf(const List& list) {
  [[maybe_unused]] const auto& [rows] = list;
  const auto show = [](const std::vector<View>& views) {
    return [views](List& l) { l.rows = std::make_shared<VectorRowSource>(views); };
  };
  return {show({}), show({Spacer{}}), show({Divider{}, Divider{}, Divider{}})};
}

Changes<ScrollView> changesOf(const ScrollView& scroll) {
  [[maybe_unused]] const auto& [showsIndicators, content] = scroll;
  return {[](ScrollView& s) { s.showsIndicators = true; },
          [](ScrollView& s) { s.content = Content(Spacer{}); }};
}

Changes<ProgressIndicator> changesOf(const ProgressIndicator&) { return {}; }

Changes<WebPage> changesOf(const WebPage& page) {
  [[maybe_unused]] const auto& [htmlContent, baseURL, onCheckboxToggle, onLoad] = page;
  return {[](WebPage& p) { p.htmlContent = "other"; },
          [](WebPage& p) { p.htmlContent = "othes"; },  // as long
          [](WebPage& p) { p.htmlContent = ""; },
          [](WebPage& p) { p.baseURL = FileURL::fromPath("/other/"); },
          [](WebPage& p) { p.onCheckboxToggle = [](std::int64_t, bool) {}; },
          [](WebPage& p) { p.onLoad = [] {}; }};
}

// The same of the modifiers: each list holds no two that are equal.

std::vector<Modifier> manyModifiers() {
  [[maybe_unused]] const auto& [edges, length] = Padding{};
  [[maybe_unused]] const auto& [width, height, maxWidth, alignment] = Frame{};
  [[maybe_unused]] const auto& [role, backgroundOpacity, safeAreas] = Background{};
  [[maybe_unused]] const auto& [opacity] = Opacity{};
  return {Padding{},
          Padding{Edges::All, 7.25},
          Padding{Edges::Horizontal, 7.25},
          Padding{Edges::Vertical, 7.25},
          Frame{},
          Frame{.width = 7.25},
          Frame{.height = 7.25},
          Frame{.maxWidth = 7.25},
          Frame{.maxWidth = kInfinity},
          Frame{.alignment = HorizontalAlignment::Leading},
          Frame{.alignment = HorizontalAlignment::Trailing},
          Background{},
          Background{.role = BackgroundRole::Text},
          Background{.opacity = 0.25},
          Background{.extendsUnderSafeAreas = true},
          Opacity{0},
          Opacity{0.25},
          Opacity{1},
          FixedSize{}};
}

/// All that `view` becomes when one thing in it or below it is changed.
std::vector<View> allChangesOf(const View& view);

/// The views around a changed child: `rebuild` puts it into its place.
void appendChildren(const std::vector<View>& children,
                    const std::function<View(std::vector<View>)>& rebuild,
                    std::vector<View>& changed) {
  for (std::size_t i = 0; i < children.size(); ++i) {
    for (const View& child : allChangesOf(children[i])) {
      std::vector<View> others = children;
      others[i] = child;
      changed.push_back(rebuild(others));
    }
    std::vector<View> fewer = children;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
    changed.push_back(rebuild(fewer));
  }
}

struct ChildChanger {
  const View& view;
  std::vector<View>& changed;

  template <typename Stack>
  void changeChildren(const Stack& stack) const {
    appendChildren(
        stack.children,
        [&](std::vector<View> children) {
          View result = view;
          std::get<Stack>(result.node).children = std::move(children);
          return result;
        },
        changed);
  }
  void operator()(const VStack& stack) const { changeChildren(stack); }
  void operator()(const HStack& stack) const { changeChildren(stack); }
  void operator()(const Overlay& overlay) const { changeChildren(overlay); }
  void operator()(const List& list) const {
    std::vector<View> rows;
    for (std::size_t i = 0; i < list.rows->count(); ++i) rows.push_back(list.rows->row(i));
    appendChildren(
        rows,
        [&](const std::vector<View>& others) {
          View result = view;
          std::get<List>(result.node).rows = std::make_shared<VectorRowSource>(others);
          return result;
        },
        changed);
  }
  void operator()(const ScrollView& scroll) const {
    for (const View& content : allChangesOf(*scroll.content)) {
      View result = view;
      std::get<ScrollView>(result.node).content = Content(content);
      changed.push_back(result);
    }
  }
  template <typename Leaf>
  void operator()(const Leaf&) const {}
};

void appendModifierChanges(const View& view, std::vector<View>& changed) {
  for (std::size_t i = 0; i <= view.modifiers.size(); ++i) {
    for (const Modifier& modifier : manyModifiers()) {
      View more = view;
      more.modifiers.insert(more.modifiers.begin() + static_cast<std::ptrdiff_t>(i), modifier);
      changed.push_back(more);
      if (i == view.modifiers.size() || view.modifiers[i] == modifier) continue;
      View other = view;
      other.modifiers[i] = modifier;
      changed.push_back(other);
    }
  }
}

std::vector<View> allChangesOf(const View& view) {
  std::vector<View> changed;
  std::visit(
      [&](const auto& node) {
        for (const auto& change : changesOf(node)) {
          View other = view;
          change(std::get<std::decay_t<decltype(node)>>(other.node));
          changed.push_back(other);
        }
      },
      view.node);
  std::visit(ChildChanger{view, changed}, view.node);
  appendModifierChanges(view, changed);
  return changed;
}

/// A layout with a node of each kind in it, some of them modified.
View everyKind() {
  const View row =
      View(HStack{.children = {Text{.text = "name"}, Spacer{}}}).with(Padding{Edges::Vertical, 1});
  return View(
      VStack{.children = {
                 SegmentedPicker{.segments = {{"a", "A"}, {"b", "B"}}, .selection = "a"},
                 Divider{},
                 Overlay{{WebPage{.htmlContent = "pages"}, ProgressIndicator{},
                          ScrollView{.content = Content(Text{.text = longText('z')})}}},
                 View(Image{.source = NamedIcon{"icon"}}).with(Frame{.width = 20, .height = 20}),
                 List{std::make_shared<VectorRowSource>(std::vector<View>{row, row})},
             }});
}

TEST(OutlineCompleteness, ChangingAnythingAnywhereChangesTheOutline) {
  const View view = everyKind();
  const std::string outlineBefore = outline(view);
  const std::vector<View> changed = allChangesOf(view);
  EXPECT_GT(changed.size(), 300U);
  for (const View& other : changed) EXPECT_NE(outline(other), outlineBefore);
}

TEST(OutlineCompleteness, WhatIsPrintedAlikeIsEqual) {
  View view = everyKind();
  // Two lists are equal only if they share their source, which no copy with a changed row does.
  std::get<VStack>(view.node).children.pop_back();
  std::map<std::string, View> known;
  for (const View& other : allChangesOf(view)) {
    const auto [first, isNew] = known.emplace(outline(other), other);
    if (!isNew) {
      EXPECT_EQ(other, first->second) << first->first;
    }
  }
  EXPECT_GT(known.size(), 250U);
}

}  // namespace
}  // namespace lumisk::ui
