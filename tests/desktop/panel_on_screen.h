#pragma once

#include <gtk/gtk.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/page_drawing.h"
#include "desktop/panel.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {

/// Visits `widget` and all below it that are shown, from the leading edge of the tree on.
inline void forEachShown(GtkWidget* widget, const std::function<void(GtkWidget*)>& visit) {
  if (gtk_widget_get_mapped(widget) == FALSE || gtk_widget_get_opacity(widget) <= 0) return;
  visit(widget);
  // What the engine and the toolkit's text view have inside is theirs.
  if (WEBKIT_IS_WEB_VIEW(widget) || GTK_IS_TEXT_VIEW(widget)) return;
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    forEachShown(child, visit);
}

inline std::vector<GtkWidget*> shownBelow(GtkWidget* root,
                                          const std::function<bool(GtkWidget*)>& isWanted) {
  std::vector<GtkWidget*> found;
  forEachShown(root, [&](GtkWidget* widget) {
    if (isWanted(widget)) found.push_back(widget);
  });
  return found;
}

/// A panel in a window of its own.
class PanelOnScreen {
 public:
  explicit PanelOnScreen(BackgroundQueue& preparing = desktop::preparationQueue())
      : panel_(std::make_unique<desktop::Panel>(Program::shared().platform.platform(),
                                                Program::shared().liveViews, preparing)) {
    panel_->onPageFinished = [this] { ++finishedLoads_; };
  }

  /// Shows the item and waits until it is there.
  bool open(const std::filesystem::path& path) {
    finishedLoads_ = 0;
    panel_->show(FileURL::fromPath(path.string()));
    if (!runUntil([&] { return !panel_->isMakingReady(); })) return false;
    const bool isPage = panel_->webViews().latestView() != nullptr;
    const bool isThere = runUntil([&] {
      const bool isMapped = gtk_widget_get_mapped(GTK_WIDGET(window())) == TRUE;
      return isMapped && (!isPage || finishedLoads_ > 0);
    });
    if (isPage && isThere) return isDrawn();
    runFor(300);
    return isThere;
  }

  /// Clicks the first link of the page, which leads to another.
  bool followLink() {
    evaluate(panel_->webViews().latestView(), "document.querySelector('a').click()");
    const bool hasLeft = runUntil([&] { return panel_->webViews().canGoBack(); });
    runFor(300);
    return hasLeft;
  }

  desktop::Panel* operator->() { return panel_.get(); }
  GtkWindow* window() { return panel_->window(); }
  GtkWidget* root() { return GTK_WIDGET(window()); }

 private:
  bool isDrawn() {
    bool isDone = false;
    desktop::PageDrawing drawing;
    drawing.wait(panel_->webViews().latestView(), [&] { isDone = true; });
    return runUntil([&] { return isDone; });
  }

  std::unique_ptr<desktop::Panel> panel_;
  int finishedLoads_ = 0;
};

/// Items of each kind, and one that has no preview.
class ItemsToShow {
 public:
  ItemsToShow() {
    writeAll(folder_ / "guide.md",
             "# Guide\n\nSome text, and more text.\n\n[next](next.html)\n\n```c\nint a;\n```\n");
    writeAll(folder_ / "next.html", "<title>Next</title><p>next</p>");
    writeAll(folder_ / "data.json", "{\"a\": [1, 2]}");
    writeAll(folder_ / "table.csv", "Name,Year\nAda,1815\n");
    writeAll(folder_ / "main.cpp", "int main() {}\n");
    writeAll(folder_ / "picture.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff", 17));
    std::filesystem::create_directories(folder_ / "folder/inner");
    writeAll(folder_ / "folder/a note.txt", "x");
    std::filesystem::create_directories(folder_ / "empty");
  }
  std::filesystem::path operator/(const char* name) const { return folder_ / name; }

  static constexpr const char* kNames[] = {"guide.md", "data.json",   "table.csv", "main.cpp",
                                           "folder",   "picture.png", "empty",     "missing"};

 private:
  TemporaryFolder folder_;
};

}  // namespace lumisk::test
