#include "web/page_host.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "support/files.h"
#include "support/recording_web_view.h"

namespace lumisk {
namespace {

using test::FixedCachesDirectory;
using test::RecordingWebViewFactory;
using test::TemporaryFolder;

class PageHosting : public testing::Test {
 protected:
  std::size_t loads() const {
    std::size_t count = 0;
    for (const std::string& line : factory_.log) count += line.starts_with("load ") ? 1 : 0;
    return count;
  }
  std::string written() const { return test::readAll(folder_ / "LumiskHTML" / "preview.html"); }

  TemporaryFolder folder_;
  FixedCachesDirectory caches_{folder_.path().string()};
  RecordingWebViewFactory factory_;
};

TEST_F(PageHosting, LoadsThePageAtOnce) {
  const PageHost host({.htmlContent = "page"}, factory_, caches_);
  EXPECT_EQ(loads(), 1U);
  EXPECT_EQ(written(), "page");
}

TEST_F(PageHosting, LoadsAgainOnlyWhenThePageDiffers) {
  PageHost host({.htmlContent = "page"}, factory_, caches_);
  host.update({.htmlContent = "page"});
  EXPECT_EQ(loads(), 1U);
  host.update({.htmlContent = "other"});
  EXPECT_EQ(loads(), 2U);
  EXPECT_EQ(written(), "other");
  host.update({.htmlContent = "other", .baseURL = FileURL::fromPath("/a/")});
  EXPECT_EQ(loads(), 3U);
  host.update({.htmlContent = "other", .baseURL = FileURL::fromPath("/a/"), .onLoad = [] {}});
  EXPECT_EQ(loads(), 3U) << "a callback is no part of the page";
}

TEST_F(PageHosting, LoadsWhatWasWrittenBeforeOnce) {
  auto page = writePageBeside(folder_.path().string(), "written");
  ASSERT_TRUE(page);
  PageHost host({.htmlContent = "page"}, factory_, caches_, std::move(page));
  EXPECT_EQ(loads(), 1U);
  EXPECT_EQ(written(), "written") << "not written again";
  host.reload();
  EXPECT_EQ(written(), "page");
}

TEST_F(PageHosting, LoadsFromTextWhereWhatWasWrittenCannotStandInPlace) {
  auto page = writePageBeside(folder_.path().string(), "page");
  ASSERT_TRUE(page);
  std::filesystem::create_directories(folder_ / "LumiskHTML/preview.html/in the way");
  const PageHost host({.htmlContent = "page"}, factory_, caches_, std::move(page));
  EXPECT_EQ(loads(), 1U);
  EXPECT_EQ(factory_.log.back(), "load text \"page\" without base");
}

TEST_F(PageHosting, KeepsItsWebViewThroughAllUpdates) {
  PageHost host({.htmlContent = "page"}, factory_, caches_);
  const WebView* const webView = &host.webView();
  host.update({.htmlContent = "other"});
  host.reload();
  EXPECT_EQ(&host.webView(), webView);
  EXPECT_EQ(loads(), 3U);
}

TEST_F(PageHosting, EventsReachTheCallbacksOfTheFirstPage) {
  std::string heard;
  PageHost host({.onCheckboxToggle = [&](std::int64_t, bool) { heard += "toggle "; },
                 .onLoad = [&] { heard += "load "; }},
                factory_, caches_);
  host.update({.htmlContent = "other", .onLoad = [&] { heard += "late "; }});
  factory_.webView->navigationDelegate->didFinishNavigation();
  factory_.post(ScriptDictionary{
      {"type", std::string("checkbox")}, {"index", std::int64_t{1}}, {"checked", true}});
  EXPECT_EQ(heard, "load toggle ");
}

TEST_F(PageHosting, TheWebViewGoesWithIt) {
  { const PageHost host({.htmlContent = "page"}, factory_, caches_); }
  EXPECT_EQ(factory_.log.back(), "gone");
}

}  // namespace
}  // namespace lumisk
