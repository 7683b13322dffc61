#include "web/html_preview_view.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/files.h"
#include "support/recording_web_view.h"
#include "ui/outline.h"
#include "web/coordinator.h"

namespace lumisk {
namespace {

using test::FixedCachesDirectory;
using test::readAll;
using test::RecordingWebView;
using test::RecordingWebViewFactory;
using test::TemporaryFolder;
using test::WebLog;

const FileURL kNotes = FileURL::fromPath("/home/ada/notes/");

std::string loadOf(const TemporaryFolder& folder) {
  const std::string path = (folder / "LumiskHTML" / "preview.html").string();
  return "load file://" + path + " reading file:///";
}

TEST(HTMLPreviewView, ItsBodyIsOneWebPage) {
  const HTMLPreviewView view{.htmlContent = "<p></p>", .baseURL = kNotes, .onLoad = [] {}};
  EXPECT_EQ(ui::outline(view.body()),
            "webpage length=7 digest=c009b4b77c4bd716 "
            "base=\"file:///home/ada/notes/\" on-load\n");
  const auto page = std::get<ui::WebPage>(view.body().node);
  EXPECT_EQ(htmlPreviewView(page).body(), view.body());
}

TEST(HTMLPreviewView, ConfiguresTheWebViewInOrder) {
  RecordingWebViewFactory factory;
  const HTMLPreviewView view{.htmlContent = "<p></p>"};
  const auto coordinator = view.makeCoordinator();
  const auto webView = view.makeWebView(factory, *coordinator);
  EXPECT_EQ(factory.log,
            (WebLog{"make handler lumisk scripts", "drawsBackground no", "navigationDelegate"}));
  EXPECT_EQ(factory.webView->navigationDelegate, coordinator.get());
  const auto& handlers = factory.configuration.userContentController.scriptMessageHandlers;
  ASSERT_EQ(handlers.size(), 1U);
  EXPECT_EQ(handlers[0].handler, coordinator.get());
}

TEST(HTMLPreviewView, EachWebViewHasAConfigurationOfItsOwn) {
  RecordingWebViewFactory factory;
  const HTMLPreviewView view{.htmlContent = "<p></p>"};
  const auto first = view.makeCoordinator();
  const auto second = view.makeCoordinator();
  const auto firstWebView = view.makeWebView(factory, *first);
  const auto secondWebView = view.makeWebView(factory, *second);
  const auto& handlers = factory.configuration.userContentController.scriptMessageHandlers;
  ASSERT_EQ(handlers.size(), 1U);
  EXPECT_EQ(handlers[0].handler, second.get());
}

TEST(HTMLPreviewView, WritesThePageAndLoadsItWithAccessToEverything) {
  const TemporaryFolder caches;
  WebLog log;
  RecordingWebView webView(log);
  std::string loaded;
  webView.onLoadFile = [&](const FileURL& url) { loaded = readAll(url.path()); };
  const HTMLPreviewView view{.htmlContent = "<p>\xC3\xA9</p>", .baseURL = kNotes};
  view.updateWebView(webView, FixedCachesDirectory(caches.path().string()));
  EXPECT_EQ(log, WebLog{loadOf(caches)});
  EXPECT_EQ(loaded, "<p>\xC3\xA9</p>") << "the page was there before its load began";
}

TEST(HTMLPreviewView, EveryUpdateWritesAndLoadsAnew) {
  const TemporaryFolder caches;
  WebLog log;
  RecordingWebView webView(log);
  const HTMLPreviewView view{.htmlContent = "same"};
  const FixedCachesDirectory directory(caches.path().string());
  view.updateWebView(webView, directory);
  test::writeAll(caches / "LumiskHTML" / "preview.html", "of another preview");
  view.updateWebView(webView, directory);
  EXPECT_EQ(log, (WebLog{loadOf(caches), loadOf(caches)}));
  EXPECT_EQ(readAll(caches / "LumiskHTML" / "preview.html"), "same");
}

TEST(HTMLPreviewView, AnEmptyPageIsAnEmptyFile) {
  const TemporaryFolder caches;
  WebLog log;
  RecordingWebView webView(log);
  HTMLPreviewView{}.updateWebView(webView, FixedCachesDirectory(caches.path().string()));
  EXPECT_EQ(log, WebLog{loadOf(caches)});
  EXPECT_EQ(std::filesystem::file_size(caches / "LumiskHTML" / "preview.html"), 0U);
}

TEST(HTMLPreviewView, LoadsFromTextWhenTheFileCannotBeWritten) {
  const TemporaryFolder folder;
  test::writeAll(folder / "file", "");
  const FixedCachesDirectory below((folder / "file").string());
  WebLog log;
  RecordingWebView webView(log);
  HTMLPreviewView{.htmlContent = "page", .baseURL = kNotes}.updateWebView(webView, below);
  HTMLPreviewView{.htmlContent = "page"}.updateWebView(webView, below);
  EXPECT_EQ(log, (WebLog{"load text \"page\" base file:///home/ada/notes/",
                         "load text \"page\" without base"}));
}

TEST(HTMLPreviewViewDeathTest, WithoutACachesDirectoryTheProcessEndsWithAReason) {
  WebLog log;
  RecordingWebView webView(log);
  const HTMLPreviewView view{.htmlContent = "page"};
  EXPECT_DEATH(view.updateWebView(webView, FixedCachesDirectory(std::nullopt)),
               "there is no caches directory");
}

}  // namespace
}  // namespace lumisk
