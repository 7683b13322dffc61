#include "views/json_dual_preview_view.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "core/json_page.h"
#include "support/fake_strings.h"
#include "support/outlines.h"

namespace lumisk {
namespace {

using test::expectOutline;
using test::only;
using test::press;
using PreviewMode = JSONDualPreviewView::PreviewMode;

constexpr const char* kFormatted = "preview.mode.formatted";
constexpr const char* kText = "preview.mode.source";
constexpr const char* kSource = "{\"b\":[1,2],\"a\":null}";

const FileURL kFolder = FileURL::fromPath("/home/ada/notes/");
const FileURL kFile = FileURL::fromPath("/home/ada/notes/data.json");

class JSONDualPreview : public testing::Test {
 protected:
  JSONDualPreview() {
    view_.setOnChange([this] { ++changes_; });
  }
  std::string_view page() { return only<ui::WebPage>(view_.body()).htmlContent.view(); }
  void expectOutlineOf(const char* name) {
    expectOutline(view_.body(), name, view_.state->renderedHTML.size());
  }

  test::FakeStrings strings_;
  JSONDualPreviewView view_{kSource, kFolder, false, PreviewMode::Formatted, strings_};
  int changes_ = 0;
};

TEST_F(JSONDualPreview, HasNoPageBeforeItAppears) {
  EXPECT_EQ(view_.state->selectedMode, PreviewMode::Formatted);
  EXPECT_EQ(page(), "");
}

TEST_F(JSONDualPreview, BuildsItsFirstPageWhenItAppears) {
  view_.onAppear();
  EXPECT_EQ(page(), buildJSONHTML(kSource, kFile, false, true));
  EXPECT_EQ(changes_, 1);
  expectOutlineOf("json_formatted");
}

TEST_F(JSONDualPreview, EachChangeOfModeBuildsThePageAnewWithTheSameResult) {
  const std::string formatted = buildJSONHTML(kSource, kFile, false, true);
  const std::string text = buildJSONHTML(kSource, kFile, false, false);
  ASSERT_NE(formatted, text);
  view_.onAppear();
  press(view_.body(), kText);
  EXPECT_EQ(page(), text);
  EXPECT_EQ(changes_, 2) << "mode and page change together";
  expectOutlineOf("json_text");
  press(view_.body(), kFormatted);
  EXPECT_EQ(page(), formatted);
  EXPECT_EQ(changes_, 3);
  expectOutlineOf("json_formatted");
}

TEST_F(JSONDualPreview, ThePressedSegmentAndUnknownOnesChangeNothing) {
  view_.onAppear();
  press(view_.body(), kFormatted);
  press(view_.body(), "preview.mode.rendered");
  press(view_.body(), "text");
  EXPECT_EQ(changes_, 1);
  expectOutlineOf("json_formatted");
}

TEST_F(JSONDualPreview, IsBuiltAgainAtEveryAppearanceInTheModeOfTheMoment) {
  view_.onAppear();
  press(view_.body(), kText);
  view_.onAppear();
  EXPECT_EQ(page(), buildJSONHTML(kSource, kFile, false, false));
}

TEST_F(JSONDualPreview, KeepsTheAppearanceItWasMadeFor) {
  const JSONDualPreviewView dark(kSource, kFolder, true, PreviewMode::Formatted, strings_);
  dark.onAppear();
  EXPECT_EQ(dark.state->renderedHTML.view(), buildJSONHTML(kSource, kFile, true, true));
}

TEST_F(JSONDualPreview, WithoutAFolderNoPageIsEverBuilt) {
  const JSONDualPreviewView view(kSource, std::nullopt, false, PreviewMode::Formatted, strings_);
  view.onAppear();
  EXPECT_EQ(view.state->renderedHTML.view(), "");
  press(view.body(), kText);
  EXPECT_EQ(only<ui::SegmentedPicker>(view.body()).selection, kText);
  EXPECT_EQ(view.state->renderedHTML.view(), "");
}

TEST_F(JSONDualPreview, ItsWebPageHasTheFolderAsBaseAndNoCallbacks) {
  view_.onAppear();
  const auto webPage = only<ui::WebPage>(view_.body());
  EXPECT_EQ(webPage.baseURL, kFolder);
  EXPECT_FALSE(webPage.onLoad.isPresent());
  EXPECT_FALSE(webPage.onCheckboxToggle.isPresent());
}

TEST_F(JSONDualPreview, ABodyCopiesNoText) {
  view_.onAppear();
  EXPECT_EQ(page().data(), view_.state->renderedHTML.data());
}

TEST_F(JSONDualPreview, WhatIsNoJSONShowsTheSamePageInBothModes) {
  const JSONDualPreviewView view("{\"a\": <", kFolder, false, PreviewMode::Formatted, strings_);
  view.onAppear();
  const ui::SharedText formatted = view.state->renderedHTML;
  EXPECT_NE(formatted.view().find("{\"a\": &lt;"), std::string_view::npos);
  press(view.body(), kText);
  EXPECT_EQ(view.state->renderedHTML, formatted);
}

}  // namespace
}  // namespace lumisk
