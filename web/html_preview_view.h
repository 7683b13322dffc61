#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "core/file_url.h"
#include "platform/platform.h"
#include "ui/action.h"
#include "ui/shared_text.h"
#include "ui/view.h"
#include "web/page_file.h"
#include "web/web_view.h"

namespace lumisk {

class Coordinator;

/// Shows one whole page in a web view and hands the page's events to its owner: the end of a load,
/// and a task's checkbox that was ticked.
///
/// The page is written to one file in the person's caches directory and loaded from there with
/// access to the whole file system, so that the images it names by local path appear. Every
/// preview uses the same file; nothing is remembered of what was loaded before.
///
/// A value: it owns nothing. Whoever draws it makes a coordinator, then a web view, and keeps both
/// for as long as the view keeps its place; see `PageHost`.
struct HTMLPreviewView {
  ui::SharedText htmlContent = {};
  /// The folder of the previewed file; matters only when the page cannot be loaded from a file.
  std::optional<FileURL> baseURL = {};
  /// Called with the checkbox's place among all of the page's, from 0, and its new state.
  ui::Action<std::int64_t, bool> onCheckboxToggle = {};
  /// Called after every finished navigation.
  ui::Action<> onLoad = {};

  ui::View body() const;

  std::unique_ptr<Coordinator> makeCoordinator() const;
  /// A configured web view that reports to `coordinator`, which must outlive it.
  std::unique_ptr<WebView> makeWebView(WebViewFactory& factory, Coordinator& coordinator) const;
  /// Writes `htmlContent` to the page file and starts a load of it, each time anew. When it cannot
  /// be written the page is loaded from text. A platform without caches directory ends the
  /// process: a host that is to live on there must offer one of its own.
  void updateWebView(WebView& webView, const CachesDirectory& caches) const;
  /// The same with `htmlContent` written already.
  void updateWebView(WebView& webView, WrittenPage page) const;

 private:
  void load(WebView& webView, const std::optional<FileURL>& pageFile) const;
};

/// The view that a node of a body stands for.
HTMLPreviewView htmlPreviewView(const ui::WebPage& page);

}  // namespace lumisk
