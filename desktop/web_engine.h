#pragma once

#include <webkit/webkit.h>

#include <string>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// Where the program's files lie. Any may be missing: pages then load their libraries from the
/// network, and texts are in English.
struct EngineFiles {
  /// The folder that holds the web-process extension and nothing else.
  std::string extensionFolder;
  /// The folder of the client libraries, with their manifest.
  std::string storeFolder;
  /// The folder of the message catalogues; empty: where the program was to be installed.
  std::string localeFolder = {};
};

/// What all web views of the program share: the web context with its web-process extension, the
/// settings, and one network session that keeps nothing on the disk. To be made before the first
/// window: how windows are drawn is chosen together with how pages are (`graphics.h`).
class WebEngine {
 public:
  explicit WebEngine(const EngineFiles& files);

  /// A new view without a background of its own, in which a page can neither ask the person
  /// anything nor print, play by itself, open windows, fill the screen or save files. Its web
  /// process starts at the first load.
  GRef<WebKitWebView> makeView() const;

  /// Whether a graphics card draws the pages.
  bool isDrawnByCard() const { return isDrawnByCard_; }

  /// Forgets the sites that pages have been led to: their cookies, caches, workers. For the views
  /// that are made from then on.
  void forgetSites();

  /// Lets the sites that the view leads to have cookies, which they do without until then. Those
  /// last until the sites are forgotten.
  static void acceptCookies(WebKitWebView* view);

 private:
  bool isDrawnByCard_;
  GRef<WebKitWebContext> context_;
  GRef<WebKitNetworkSession> session_;
  GRef<WebKitSettings> settings_;
};

}  // namespace lumisk::desktop
