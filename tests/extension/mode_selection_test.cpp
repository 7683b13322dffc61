#include "extension/mode_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_strings.h"
#include "views/json_dual_preview_view.h"
#include "views/jsonl_dual_preview_view.h"
#include "views/markdown_dual_preview_view.h"

namespace lumisk {
namespace {

using Names = std::vector<std::string>;

class ModeSelection : public testing::Test {
 protected:
  test::FakeStrings strings_;
  MarkdownDualPreviewView markdown_{"a", "b", FileURL::fromPath("/x/"), strings_};
  JSONDualPreviewView json_{"[1]", FileURL::fromPath("/x/"), false,
                            JSONDualPreviewView::PreviewMode::Formatted, strings_};
  JSONLDualPreviewView jsonl_{"[1]", FileURL::fromPath("/x/"), false,
                              JSONLDualPreviewView::PreviewMode::Text, strings_};
};

TEST_F(ModeSelection, NamesTheModesInTheOrderOfTheSegments) {
  EXPECT_EQ(modeNames(markdown_.body()), (Names{"rendered", "source"}));
  EXPECT_EQ(modeNames(json_.body()), (Names{"formatted", "source"}));
  EXPECT_EQ(modeNames(jsonl_.body()), (Names{"formatted", "source"}));
  EXPECT_EQ(modeNames(ui::WebPage{}), Names{});
}

TEST_F(ModeSelection, AModeAnswersToItsNameItsRawValueAndText) {
  for (const char* name : {"source", "text", "preview.mode.source"}) {
    EXPECT_TRUE(selectMode(markdown_.body(), "rendered"));
    EXPECT_EQ(markdown_.state->selectedMode, MarkdownDualPreviewView::PreviewMode::Rendered);
    EXPECT_TRUE(selectMode(markdown_.body(), name));
    EXPECT_EQ(markdown_.state->selectedMode, MarkdownDualPreviewView::PreviewMode::Source) << name;
    EXPECT_TRUE(selectMode(json_.body(), "preview.mode.formatted"));
    EXPECT_TRUE(selectMode(json_.body(), name));
    EXPECT_EQ(json_.state->selectedMode, JSONDualPreviewView::PreviewMode::Text) << name;
  }
  EXPECT_TRUE(selectMode(jsonl_.body(), "formatted"));
  EXPECT_EQ(jsonl_.state->selectedMode, JSONLDualPreviewView::PreviewMode::Formatted);
}

TEST_F(ModeSelection, WhatIsNoModeOfTheViewChangesNothing) {
  for (const char* name : {"formatted", "", "Source", "mode.source", "raw", "preview.mode"}) {
    EXPECT_FALSE(selectMode(markdown_.body(), name)) << name;
  }
  EXPECT_FALSE(selectMode(json_.body(), "rendered"));
  EXPECT_FALSE(selectMode(ui::WebPage{}, "source"));
  EXPECT_EQ(markdown_.state->selectedMode, MarkdownDualPreviewView::PreviewMode::Rendered);
}

}  // namespace
}  // namespace lumisk
