#include "ui/view.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/vector_row_source.h"
#include "ui/outline.h"

namespace lumisk::ui {
namespace {

using test::VectorRowSource;

std::shared_ptr<const RowSource> noRows() {
  return std::make_shared<VectorRowSource>(std::vector<View>{});
}

// Every kind, and every field of it changed once.
std::vector<View> manyViews() {
  const auto rows = noRows();
  const FileURL base = FileURL::fromPath("/a/");
  const std::vector<View> child = {Divider{}};
  return {
      VStack{},
      VStack{.alignment = HorizontalAlignment::Leading, .children = {}},
      VStack{.alignment = HorizontalAlignment::Trailing, .children = {}},
      VStack{.spacing = 0, .children = {}},
      VStack{.spacing = 1, .children = {}},
      VStack{.children = child},
      VStack{.children = {Divider{}, Divider{}}},
      VStack{.children = {Spacer{}}},
      VStack{.children = {VStack{.children = child}}},
      HStack{},
      HStack{.alignment = VerticalAlignment::Top, .children = {}},
      HStack{.alignment = VerticalAlignment::Bottom, .children = {}},
      HStack{.spacing = 0, .children = {}},
      HStack{.children = child},
      Overlay{},
      Overlay{child},
      Spacer{},
      Spacer{.minLength = 0},
      Spacer{.minLength = 8},
      Divider{},
      Text{},
      Text{.text = "a"},
      Text{.text = "b"},
      Text{.font = {.size = TextStyle::Headline}},
      Text{.font = {.size = TextStyle::Caption}},
      Text{.font = {.size = 13.0}},
      Text{.font = {.size = 12.0}},
      Text{.font = {.design = FontDesign::Monospaced}},
      Text{.font = {.weight = FontWeight::Bold}},
      Text{.foreground = ForegroundRole::Secondary},
      Text{.isSelectable = true},
      Text{.lineLimit = 1},
      Text{.lineLimit = 2},
      Image{.source = NamedIcon{"a"}},
      Image{.source = NamedIcon{"b"}},
      Image{.source = FileIcon{"a"}},
      Image{.source = NamedIcon{"a"}, .isResizable = true},
      SegmentedPicker{},
      SegmentedPicker{.label = "a"},
      SegmentedPicker{.segments = {{"a", "A"}}},
      SegmentedPicker{.segments = {{"b", "A"}}},
      SegmentedPicker{.segments = {{"a", "B"}}},
      SegmentedPicker{.segments = {{"a", "A"}}, .selection = "a"},
      List{rows},
      List{noRows()},
      ScrollView{.content = Content(Divider{})},
      ScrollView{.content = Content(Spacer{})},
      ScrollView{.showsIndicators = true, .content = Content(Divider{})},
      ProgressIndicator{},
      WebPage{},
      WebPage{.htmlContent = "a"},
      WebPage{.baseURL = base},
      View(Divider{}).with(Padding{}),
      View(Divider{}).with(Padding{Edges::All, 8}),
      View(Divider{}).with(Padding{Edges::Horizontal, 8}),
      View(Divider{}).with(Padding{Edges::Vertical, 8}),
      View(Divider{}).with(Padding{Edges::Vertical, 8}).with(Padding{Edges::Horizontal, 8}),
      View(Divider{}).with(Padding{Edges::Horizontal, 8}).with(Padding{Edges::Vertical, 8}),
      View(Divider{}).with(Frame{}),
      View(Divider{}).with(Frame{.width = 1}),
      View(Divider{}).with(Frame{.height = 1}),
      View(Divider{}).with(Frame{.maxWidth = 1}),
      View(Divider{}).with(Frame{.maxWidth = kInfinity}),
      View(Divider{}).with(Frame{.alignment = HorizontalAlignment::Leading}),
      View(Divider{}).with(Background{}),
      View(Divider{}).with(Background{.role = BackgroundRole::Text}),
      View(Divider{}).with(Background{.opacity = 0.95}),
      View(Divider{}).with(Background{.extendsUnderSafeAreas = true}),
      View(Divider{}).with(Opacity{1}),
      View(Divider{}).with(Opacity{0}),
      View(Divider{}).with(FixedSize{}),
      View(Divider{}).with(FixedSize{}).with(Padding{Edges::All, 8}),
      View(Divider{}).with(Padding{Edges::All, 8}).with(FixedSize{}),
  };
}

TEST(View, EqualsItselfItsCopyAndNothingElse) {
  const std::vector<View> views = manyViews();
  for (std::size_t i = 0; i < views.size(); ++i) {
    for (std::size_t j = 0; j < views.size(); ++j) {
      const View copy = views[j];
      EXPECT_EQ(views[i] == copy, i == j) << outline(views[i]) << outline(copy);
    }
  }
}

TEST(View, IsToldApartByItsOutlineToo) {
  const std::vector<View> views = manyViews();
  for (std::size_t i = 0; i < views.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const bool areLists = std::holds_alternative<List>(views[i].node) &&
                            std::holds_alternative<List>(views[j].node);
      if (areLists) continue;  // of different identity, and alike to look at
      EXPECT_NE(outline(views[i]), outline(views[j]));
    }
  }
}

TEST(View, ActionsMakeNoDifference) {
  EXPECT_EQ(View(WebPage{.onLoad = [] {}}), View(WebPage{}));
  EXPECT_EQ(View(SegmentedPicker{.onSelect = [](const std::string&) {}}), View(SegmentedPicker{}));
}

TEST(View, ListsAreComparedByTheirSourceNotByTheirRows) {
  const auto rows = noRows();
  EXPECT_EQ(View(List{rows}), View(List{rows}));
  EXPECT_NE(View(List{rows}), View(List{noRows()}));
}

TEST(Action, AbsentIsNotCalledAndPresentIs) {
  int sum = 0;
  Action<int, bool> action;
  EXPECT_FALSE(action.isPresent());
  action(1, true);
  action = [&](int number, bool isAdded) { sum += isAdded ? number : 0; };
  EXPECT_TRUE(action.isPresent());
  action(3, true);
  action(5, false);
  EXPECT_EQ(sum, 3);
}

}  // namespace
}  // namespace lumisk::ui
