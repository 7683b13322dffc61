#include "views/markdown_dual_preview_view.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "support/fake_strings.h"
#include "support/files.h"
#include "support/outlines.h"
#include "support/recording_web_view.h"
#include "ui/hosted_view.h"
#include "ui/outline.h"
#include "web/page_host.h"

namespace lumisk {
namespace {

using test::expectOutline;
using test::only;
using test::press;
using PreviewMode = MarkdownDualPreviewView::PreviewMode;

constexpr const char* kRendered = "preview.mode.rendered";
constexpr const char* kSource = "preview.mode.source";

class MarkdownDualPreview : public testing::Test {
 protected:
  MarkdownDualPreview() {
    view_.setOnChange([this] { ++changes_; });
  }
  void finishLoad() { only<ui::WebPage>(view_.body()).onLoad(); }
  void expectOutlineOf(const char* name) {
    expectOutline(view_.body(), name, view_.htmlContent.size());
  }

  test::FakeStrings strings_;
  MarkdownDualPreviewView view_{"# Notes\n\n*One* & two.\n", "<!DOCTYPE html><p>page</p>",
                                FileURL::fromPath("/home/ada/notes/"), strings_};
  int changes_ = 0;
};

TEST_F(MarkdownDualPreview, OpensRenderedWithItsSpinner) {
  EXPECT_EQ(view_.state->selectedMode, PreviewMode::Rendered);
  EXPECT_FALSE(view_.state->isRenderLoaded);
  expectOutlineOf("markdown_loading");
}

TEST_F(MarkdownDualPreview, TheFirstLoadTakesTheSpinnerAwayForGood) {
  finishLoad();
  EXPECT_TRUE(view_.state->isRenderLoaded);
  EXPECT_EQ(changes_, 1);
  expectOutlineOf("markdown_rendered");
  finishLoad();
  EXPECT_TRUE(view_.state->isRenderLoaded);
  expectOutlineOf("markdown_rendered");
}

TEST_F(MarkdownDualPreview, TheOtherModeShowsTheSource) {
  finishLoad();
  press(view_.body(), kSource);
  EXPECT_EQ(view_.state->selectedMode, PreviewMode::Source);
  EXPECT_EQ(changes_, 2);
  expectOutlineOf("markdown_source");
  press(view_.body(), kRendered);
  expectOutlineOf("markdown_rendered");
}

TEST_F(MarkdownDualPreview, TheSourceCanBeReadWhileThePageStillLoads) {
  press(view_.body(), kSource);
  const std::string outline = ui::outline(view_.body());
  EXPECT_NE(outline.find("overlay opacity=0\n      webpage"), std::string::npos) << outline;
  EXPECT_NE(outline.find("\n      progress\n"), std::string::npos) << outline;
  finishLoad();
  expectOutlineOf("markdown_source");
}

TEST_F(MarkdownDualPreview, SwitchingLoadsNothing) {
  const test::TemporaryFolder caches;
  const test::FixedCachesDirectory directory(caches.path().string());
  test::RecordingWebViewFactory factory;
  PageHost host(only<ui::WebPage>(view_.body()), factory, directory);
  const std::size_t before = factory.log.size();
  for (const char* mode : {kSource, kRendered, kSource}) {
    press(view_.body(), mode);
    host.update(only<ui::WebPage>(view_.body()));
  }
  EXPECT_EQ(factory.log.size(), before);
  factory.webView->navigationDelegate->didFinishNavigation();
  EXPECT_TRUE(view_.state->isRenderLoaded);
}

TEST_F(MarkdownDualPreview, ThePressedSegmentAndUnknownOnesChangeNothing) {
  press(view_.body(), kRendered);
  press(view_.body(), "preview.mode.formatted");
  press(view_.body(), "");
  EXPECT_EQ(changes_, 0);
  expectOutlineOf("markdown_loading");
}

TEST_F(MarkdownDualPreview, ABodyCopiesNoText) {
  const ui::View first = view_.body();
  const ui::View second = view_.body();
  EXPECT_EQ(only<ui::Text>(first).text.data(), view_.markdownSource.data());
  EXPECT_EQ(only<ui::Text>(second).text.data(), view_.markdownSource.data());
  EXPECT_EQ(only<ui::WebPage>(first).htmlContent.data(), view_.htmlContent.data());
}

TEST_F(MarkdownDualPreview, AnEmptyDocumentIsAnEmptyPaddedText) {
  const MarkdownDualPreviewView empty("", "page", std::nullopt, strings_);
  const std::string outline = ui::outline(empty.body());
  EXPECT_NE(outline.find("      text \"\" monospaced selectable "
                         "frame(max-width=infinity alignment=leading) padding=16\n"),
            std::string::npos)
      << outline;
  EXPECT_NE(outline.find("webpage length=4 digest=038b2a0deba58916 on-load\n"), std::string::npos)
      << outline;
}

TEST_F(MarkdownDualPreview, TheSourceIsShownAsItStands) {
  const std::string source = "%s {0} preview.mode.source <b>&amp;</b>\r\n\t\x1B";
  const MarkdownDualPreviewView view(source, "", std::nullopt, strings_);
  EXPECT_EQ(only<ui::Text>(view.body()).text.view(), source);
}

TEST_F(MarkdownDualPreview, SegmentsAreInThePersonsLanguage) {
  strings_.texts = {{kRendered, "Vorschau"}, {kSource, "Quelltext"}};
  const auto picker = only<ui::SegmentedPicker>(view_.body());
  ASSERT_EQ(picker.segments.size(), 2U);
  EXPECT_EQ(picker.segments[0].title, "Vorschau");
  EXPECT_EQ(picker.segments[1].title, "Quelltext");
  EXPECT_EQ(picker.label, "");
}

TEST_F(MarkdownDualPreview, EachPreviewStartsAfresh) {
  press(view_.body(), kSource);
  const MarkdownDualPreviewView other("a", "b", std::nullopt, strings_);
  EXPECT_EQ(other.state->selectedMode, PreviewMode::Rendered);
}

TEST_F(MarkdownDualPreview, ALoadThatFinishesAfterTheViewHasGoneIsHarmless) {
  auto hosted = std::make_unique<ui::HostedView>(MarkdownDualPreviewView(view_));
  const auto page = only<ui::WebPage>(hosted->body());
  hosted.reset();
  page.onLoad();
  EXPECT_EQ(changes_, 0);
}

}  // namespace
}  // namespace lumisk
