#include "views/mode_table.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <type_traits>

#include "support/fake_strings.h"
#include "views/json_dual_preview_view.h"
#include "views/jsonl_dual_preview_view.h"
#include "views/markdown_dual_preview_view.h"

namespace lumisk {
namespace {

using Json = JSONDualPreviewView;
using Jsonl = JSONLDualPreviewView;
using Markdown = MarkdownDualPreviewView;

static_assert(!std::is_same_v<Json::PreviewMode, Jsonl::PreviewMode>);
static_assert(!std::is_same_v<Json, Jsonl>);

struct ModeCase {
  const char* rawValue;
  const char* fallbackTitle;
};

// The modes of a view, in the order of its segments.
template <typename View>
void expectModes(const std::vector<ModeCase>& cases) {
  ASSERT_EQ(View::kModes.rows.size(), cases.size());
  const test::FakeStrings noStrings;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const auto mode = View::kModes.rows[i].mode;
    EXPECT_EQ(View::kModes.rawValue(mode), cases[i].rawValue);
    EXPECT_EQ(View::kModes.title(mode, noStrings), cases[i].fallbackTitle);
    EXPECT_EQ(View::kModes.fromRawValue(cases[i].rawValue), mode);
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(View::kModes.rows[j].mode, mode);
  }
}

TEST(PreviewModes, HaveTheirOrderRawValuesAndFallbackTitles) {
  expectModes<Markdown>(
      {{"preview.mode.rendered", "Preview"}, {"preview.mode.source", "Raw Text"}});
  expectModes<Json>({{"preview.mode.formatted", "Formatted"}, {"preview.mode.source", "Raw Text"}});
  expectModes<Jsonl>(
      {{"preview.mode.formatted", "Formatted"}, {"preview.mode.source", "Raw Text"}});
}

TEST(PreviewModes, NoOtherTextIsARawValue) {
  for (const std::string text :
       {"", "source", "rendered", "preview.mode.", "preview.mode.Rendered", "preview.mode.source ",
        " preview.mode.source", "PREVIEW.MODE.SOURCE", "preview.mode.text", "Raw Text"}) {
    EXPECT_EQ(Markdown::kModes.fromRawValue(text), std::nullopt) << text;
    EXPECT_EQ(Json::kModes.fromRawValue(text), std::nullopt) << text;
    EXPECT_EQ(Jsonl::kModes.fromRawValue(text), std::nullopt) << text;
  }
  EXPECT_EQ(Markdown::kModes.fromRawValue("preview.mode.formatted"), std::nullopt);
  EXPECT_EQ(Json::kModes.fromRawValue("preview.mode.rendered"), std::nullopt);
  EXPECT_EQ(Jsonl::kModes.fromRawValue("preview.mode.rendered"), std::nullopt);
}

TEST(PreviewModes, TitlesComeFromTheStringTableAsTheyStand) {
  test::FakeStrings strings;
  strings.texts = {{"preview.mode.rendered", "preview.mode.source"},
                   {"preview.mode.source", "Quelltext"}};
  const auto segments = Markdown::kModes.segments(strings);
  ASSERT_EQ(segments.size(), 2U);
  EXPECT_EQ(segments[0], (ui::Segment{"preview.mode.rendered", "preview.mode.source"}))
      << "a title is not looked up a second time";
  EXPECT_EQ(segments[1], (ui::Segment{"preview.mode.source", "Quelltext"}));
}

TEST(PreviewModes, AnEmptyTranslationIsATranslation) {
  test::FakeStrings strings;
  strings.texts = {{"preview.mode.source", ""}};
  EXPECT_EQ(Json::kModes.title(Json::PreviewMode::Text, strings), "");
}

}  // namespace
}  // namespace lumisk
