#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// The script world of the host's own scripts. They share the document with the page's, but the
/// page can neither see them nor put functions of its own in the place of the engine's.
inline constexpr const char* kHostWorld = "lumisk-host";

/// Has `script` run in all pages of the views with this manager, before the page's own scripts.
void runAtEachPage(WebKitUserContentManager* manager, const char* script);

/// Runs `script` in the page that is there, whatever comes of it. The engine takes it for a click
/// of the person's, so it is none for a page that is still to be seen.
void runInPage(WebKitWebView* page, const std::string& script);

/// One question to a page, asked by a script of the host's. A new one takes the place of the one
/// before; the answer to a question that was forgotten never comes. To the page it is a click, too.
class PageQuestion {
 public:
  PageQuestion() = default;
  PageQuestion(const PageQuestion&) = delete;
  PageQuestion& operator=(const PageQuestion&) = delete;
  ~PageQuestion() { forget(); }

  /// Runs `script`, the body of an asynchronous function that finds `isTrue`, 0 or 1, under `name`.
  /// `answered` is called once it has ended, and also when the page is gone before that. A page
  /// whose own scripts never end answers nothing.
  void ask(WebKitWebView* page, const char* script, const char* name, bool isTrue,
           std::function<void()> answered);
  void forget();

 private:
  static void ended(GObject* page, GAsyncResult* result, gpointer self);

  GRef<GCancellable> asking_;
  std::function<void()> answered_;
};

}  // namespace lumisk::desktop
