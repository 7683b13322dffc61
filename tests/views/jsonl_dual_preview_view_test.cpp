#include "views/jsonl_dual_preview_view.h"

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
using PreviewMode = JSONLDualPreviewView::PreviewMode;

constexpr const char* kFormatted = "preview.mode.formatted";
constexpr const char* kText = "preview.mode.source";
constexpr const char* kSource = "{\"a\":1}\n{\"b\":[2]}\n";

const FileURL kFolder = FileURL::fromPath("/home/ada/notes/");
const FileURL kFile = FileURL::fromPath("/home/ada/notes/records.jsonl");

class JSONLDualPreview : public testing::Test {
 protected:
  JSONLDualPreview() {
    view_.setOnChange([this] { ++changes_; });
  }
  std::string_view page() { return only<ui::WebPage>(view_.body()).htmlContent.view(); }
  void expectOutlineOf(const char* name) {
    expectOutline(view_.body(), name, view_.state->renderedHTML.size());
  }

  test::FakeStrings strings_;
  JSONLDualPreviewView view_{kSource, kFolder, false, PreviewMode::Text, strings_};
  int changes_ = 0;
};

TEST_F(JSONLDualPreview, HasNoPageBeforeItAppears) {
  EXPECT_EQ(view_.state->selectedMode, PreviewMode::Text);
  EXPECT_EQ(page(), "");
}

TEST_F(JSONLDualPreview, BuildsItsFirstPageWhenItAppears) {
  view_.onAppear();
  EXPECT_EQ(page(), buildJSONLHTML(kSource, kFile, false, false));
  EXPECT_EQ(changes_, 1);
  expectOutlineOf("jsonl_text");
}

TEST_F(JSONLDualPreview, EachChangeOfModeBuildsThePageAnewWithTheSameResult) {
  const std::string formatted = buildJSONLHTML(kSource, kFile, false, true);
  const std::string text = buildJSONLHTML(kSource, kFile, false, false);
  ASSERT_NE(formatted, text);
  view_.onAppear();
  press(view_.body(), kFormatted);
  EXPECT_EQ(page(), formatted);
  EXPECT_EQ(changes_, 2) << "mode and page change together";
  expectOutlineOf("jsonl_formatted");
  press(view_.body(), kText);
  EXPECT_EQ(page(), text);
  EXPECT_EQ(changes_, 3);
  expectOutlineOf("jsonl_text");
}

TEST_F(JSONLDualPreview, ThePressedSegmentAndUnknownOnesChangeNothing) {
  view_.onAppear();
  press(view_.body(), kText);
  press(view_.body(), "preview.mode.rendered");
  press(view_.body(), "text");
  EXPECT_EQ(changes_, 1);
  expectOutlineOf("jsonl_text");
}

TEST_F(JSONLDualPreview, IsBuiltAgainAtEveryAppearanceInTheModeOfTheMoment) {
  view_.onAppear();
  press(view_.body(), kFormatted);
  view_.onAppear();
  EXPECT_EQ(page(), buildJSONLHTML(kSource, kFile, false, true));
}

TEST_F(JSONLDualPreview, KeepsTheAppearanceItWasMadeFor) {
  const JSONLDualPreviewView dark(kSource, kFolder, true, PreviewMode::Formatted, strings_);
  dark.onAppear();
  EXPECT_EQ(dark.state->renderedHTML.view(), buildJSONLHTML(kSource, kFile, true, true));
}

TEST_F(JSONLDualPreview, WithoutAFolderNoPageIsEverBuilt) {
  const JSONLDualPreviewView view(kSource, std::nullopt, false, PreviewMode::Text, strings_);
  view.onAppear();
  EXPECT_EQ(view.state->renderedHTML.view(), "");
  press(view.body(), kFormatted);
  EXPECT_EQ(only<ui::SegmentedPicker>(view.body()).selection, kFormatted);
  EXPECT_EQ(view.state->renderedHTML.view(), "");
}

TEST_F(JSONLDualPreview, ItsWebPageHasTheFolderAsBaseAndNoCallbacks) {
  view_.onAppear();
  const auto webPage = only<ui::WebPage>(view_.body());
  EXPECT_EQ(webPage.baseURL, kFolder);
  EXPECT_FALSE(webPage.onLoad.isPresent());
  EXPECT_FALSE(webPage.onCheckboxToggle.isPresent());
}

TEST_F(JSONLDualPreview, ABodyCopiesNoText) {
  view_.onAppear();
  EXPECT_EQ(page().data(), view_.state->renderedHTML.data());
}

TEST_F(JSONLDualPreview, BlankLinesAloneAreAnEmptyFileWhenFormatted) {
  const JSONLDualPreviewView view("\n \n", kFolder, false, PreviewMode::Text, strings_);
  view.onAppear();
  EXPECT_EQ(view.state->renderedHTML.view().find("Empty file."), std::string_view::npos);
  press(view.body(), kFormatted);
  EXPECT_NE(view.state->renderedHTML.view().find("Empty file."), std::string_view::npos);
}

}  // namespace
}  // namespace lumisk
