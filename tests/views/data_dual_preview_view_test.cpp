// What the dual views of data have in common: a page that is built when they appear and anew in
// each mode.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/json_page.h"
#include "support/fake_strings.h"
#include "support/outlines.h"
#include "views/json_dual_preview_view.h"
#include "views/jsonl_dual_preview_view.h"

namespace lumisk {
namespace {

using test::expectOutline;
using test::only;
using test::press;

constexpr const char* kFormatted = "preview.mode.formatted";
constexpr const char* kText = "preview.mode.source";

const FileURL kFolder = FileURL::fromPath("/home/ada/notes/");

/// JSON begins laid out.
struct JSON {
  using View = JSONDualPreviewView;
  static constexpr auto kFirst = View::PreviewMode::Formatted;
  static constexpr const char* kFirstTag = kFormatted;
  static constexpr const char* kOtherTag = kText;
  static constexpr bool kIsFirstFormatted = true;
  static constexpr const char* kSource = "{\"b\":[1,2],\"a\":null}";
  static constexpr const char* kFirstOutline = "json_formatted";
  static constexpr const char* kOtherOutline = "json_text";
  static std::string pageOf(bool isDark, bool isFormatted) {
    return buildJSONHTML(kSource, FileURL::fromPath("/home/ada/notes/data.json"), isDark,
                         isFormatted);
  }
};

/// JSON Lines begin as their text.
struct JSONL {
  using View = JSONLDualPreviewView;
  static constexpr auto kFirst = View::PreviewMode::Text;
  static constexpr const char* kFirstTag = kText;
  static constexpr const char* kOtherTag = kFormatted;
  static constexpr bool kIsFirstFormatted = false;
  static constexpr const char* kSource = "{\"a\":1}\n{\"b\":[2]}\n";
  static constexpr const char* kFirstOutline = "jsonl_text";
  static constexpr const char* kOtherOutline = "jsonl_formatted";
  static std::string pageOf(bool isDark, bool isFormatted) {
    return buildJSONLHTML(kSource, FileURL::fromPath("/home/ada/notes/records.jsonl"), isDark,
                          isFormatted);
  }
};

template <typename Kind>
class DataDualPreview : public testing::Test {
 protected:
  DataDualPreview() {
    view_.setOnChange([this] { ++changes_; });
  }
  std::string_view page() const { return only<ui::WebPage>(view_.body()).htmlContent.view(); }
  void expectOutlineOf(const char* name) const {
    expectOutline(view_.body(), name, view_.state->renderedHTML.size());
  }
  static std::string firstPage() { return Kind::pageOf(false, Kind::kIsFirstFormatted); }
  static std::string otherPage() { return Kind::pageOf(false, !Kind::kIsFirstFormatted); }

  test::FakeStrings strings_;
  typename Kind::View view_{Kind::kSource, kFolder, false, Kind::kFirst, strings_};
  int changes_ = 0;
};

using Kinds = testing::Types<JSON, JSONL>;
struct KindNames {
  template <typename Kind>
  static std::string GetName(int) {  // NOLINT(readability-identifier-naming): the library's name
    return std::is_same_v<Kind, JSON> ? "JSON" : "JSONL";
  }
};
TYPED_TEST_SUITE(DataDualPreview, Kinds, KindNames);

TYPED_TEST(DataDualPreview, HasNoPageBeforeItAppears) {
  EXPECT_EQ(this->view_.state->selectedMode, TypeParam::kFirst);
  EXPECT_EQ(this->page(), "");
}

TYPED_TEST(DataDualPreview, BuildsItsFirstPageWhenItAppears) {
  this->view_.onAppear();
  EXPECT_EQ(this->page(), this->firstPage());
  EXPECT_EQ(this->changes_, 1);
  this->expectOutlineOf(TypeParam::kFirstOutline);
}

TYPED_TEST(DataDualPreview, EachChangeOfModeBuildsThePageAnewWithTheSameResult) {
  ASSERT_NE(this->firstPage(), this->otherPage());
  this->view_.onAppear();
  press(this->view_.body(), TypeParam::kOtherTag);
  EXPECT_EQ(this->page(), this->otherPage());
  EXPECT_EQ(this->changes_, 2) << "mode and page change together";
  this->expectOutlineOf(TypeParam::kOtherOutline);
  press(this->view_.body(), TypeParam::kFirstTag);
  EXPECT_EQ(this->page(), this->firstPage());
  EXPECT_EQ(this->changes_, 3);
  this->expectOutlineOf(TypeParam::kFirstOutline);
}

TYPED_TEST(DataDualPreview, ThePressedSegmentAndUnknownOnesChangeNothing) {
  this->view_.onAppear();
  press(this->view_.body(), TypeParam::kFirstTag);
  press(this->view_.body(), "preview.mode.rendered");
  press(this->view_.body(), "text");
  EXPECT_EQ(this->changes_, 1);
  this->expectOutlineOf(TypeParam::kFirstOutline);
}

TYPED_TEST(DataDualPreview, IsBuiltAgainAtEveryAppearanceInTheModeOfTheMoment) {
  this->view_.onAppear();
  press(this->view_.body(), TypeParam::kOtherTag);
  this->view_.onAppear();
  EXPECT_EQ(this->page(), this->otherPage());
}

TYPED_TEST(DataDualPreview, KeepsTheAppearanceItWasMadeFor) {
  const typename TypeParam::View dark(TypeParam::kSource, kFolder, true, TypeParam::kFirst,
                                      this->strings_);
  dark.onAppear();
  EXPECT_EQ(dark.state->renderedHTML.view(), TypeParam::pageOf(true, TypeParam::kIsFirstFormatted));
}

TYPED_TEST(DataDualPreview, WithoutAFolderNoPageIsEverBuilt) {
  const typename TypeParam::View view(TypeParam::kSource, std::nullopt, false, TypeParam::kFirst,
                                      this->strings_);
  view.onAppear();
  EXPECT_EQ(view.state->renderedHTML.view(), "");
  press(view.body(), TypeParam::kOtherTag);
  EXPECT_EQ(only<ui::SegmentedPicker>(view.body()).selection, TypeParam::kOtherTag);
  EXPECT_EQ(view.state->renderedHTML.view(), "");
}

TYPED_TEST(DataDualPreview, ItsWebPageHasTheFolderAsBaseAndNoCallbacks) {
  this->view_.onAppear();
  const auto webPage = only<ui::WebPage>(this->view_.body());
  EXPECT_EQ(webPage.baseURL, kFolder);
  EXPECT_FALSE(webPage.onLoad.isPresent());
  EXPECT_FALSE(webPage.onCheckboxToggle.isPresent());
}

TYPED_TEST(DataDualPreview, ABodyCopiesNoText) {
  this->view_.onAppear();
  EXPECT_EQ(this->page().data(), this->view_.state->renderedHTML.data());
}

// --- what one of them alone does ---

TEST(JSONDualPreview, WhatIsNoJSONShowsTheSamePageInBothModes) {
  const test::FakeStrings strings;
  const JSONDualPreviewView view("{\"a\": <", kFolder, false, JSON::kFirst, strings);
  view.onAppear();
  const ui::SharedText formatted = view.state->renderedHTML;
  EXPECT_NE(formatted.view().find("{\"a\": &lt;"), std::string_view::npos);
  press(view.body(), kText);
  EXPECT_EQ(view.state->renderedHTML, formatted);
}

TEST(JSONLDualPreview, BlankLinesAloneAreAnEmptyFileWhenFormatted) {
  const test::FakeStrings strings;
  const JSONLDualPreviewView view("\n \n", kFolder, false, JSONL::kFirst, strings);
  view.onAppear();
  EXPECT_EQ(view.state->renderedHTML.view().find("Empty file."), std::string_view::npos);
  press(view.body(), kFormatted);
  EXPECT_NE(view.state->renderedHTML.view().find("Empty file."), std::string_view::npos);
}

}  // namespace
}  // namespace lumisk
