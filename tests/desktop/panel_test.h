#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/panel.h"
#include "panel_on_screen.h"
#include "screen.h"
#include "support/files.h"
#include "x_desktop.h"

namespace lumisk::test {

/// A panel with some items to show, and a person before it.
class PanelTest : public testing::Test {
 protected:
  PanelTest() {
    std::string text;
    for (int i = 0; i < 300; ++i) text += "Line " + std::to_string(i) + " of tides.\n\n";
    writeAll(folder_ / "long.md",
             "# Tides\n\n[next](file://" + (folder_ / "next.html").string() + ")\n\n" + text);
    writeAll(folder_ / "next.html", "<title>Next</title><p id=\"next\">next</p>");
    writeAll(folder_ / "data.csv", "a,b\n1,2\n");
    writeAll(folder_ / "picture.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff", 17));
    panel_ = std::make_unique<desktop::Panel>(Program::shared().platform.platform(),
                                              Program::shared().liveViews);
    panel_->onPageFinished = [this] { ++finishedLoads_; };
    panel_->onClosed = [this] { ++closings_; };
    panel_->onQuit = [this] { hasQuit_ = true; };
  }

  void open(const char* name) {
    finishedLoads_ = 0;
    panel_->show(FileURL::fromPath((folder_ / name).string()));
    ASSERT_TRUE(runUntil([&] { return !panel_->isMakingReady(); }));
    if (page() != nullptr) {
      ASSERT_TRUE(runUntil([&] { return finishedLoads_ > 0; }));
    }
    // The window manager deals with one window after another: when it knows none but this one, it
    // has done with the window of the test before and gives the keys to no other any more.
    ASSERT_TRUE(runUntil([&] {
      const std::vector<WindowId> windows = desktop_.windows();
      return windows.size() == 1 && desktop_.hasKeyboard(windows.front()) &&
             gtk_window_is_active(panel_->window()) == TRUE;
    }));
  }
  WebKitWebView* page() { return panel_->webViews().latestView(); }
  double scrollTop() { return std::stod(evaluate(page(), "window.scrollY")); }
  GtkWidget* focus() { return gtk_root_get_focus(GTK_ROOT(panel_->window())); }
  bool hasDocumentFocus() {
    const desktop::ShownDocument shown = desktop::findShownDocument(panel_->content());
    return focus() != nullptr &&
           (focus() == GTK_WIDGET(shown.page) || focus() == GTK_WIDGET(shown.text));
  }
  /// Where the point of the widget is on the screen.
  struct Point {
    int x;
    int y;
  };
  Point onScreen(GtkWidget* widget, double x, double y) {
    double windowX = 0;
    double windowY = 0;
    gtk_widget_translate_coordinates(widget, GTK_WIDGET(panel_->window()), x, y, &windowX,
                                     &windowY);
    double surfaceX = 0;
    double surfaceY = 0;
    gtk_native_get_surface_transform(GTK_NATIVE(panel_->window()), &surfaceX, &surfaceY);
    const ScreenPlace place = desktop_.placeOf(desktop_.windows().front());
    return {place.x + static_cast<int>(surfaceX + windowX),
            place.y + static_cast<int>(surfaceY + windowY)};
  }
  /// Clicks with the mouse on a point of the widget, from its upper left corner.
  void click(GtkWidget* widget, double x, double y) {
    runFor(100);  // what has just been shown gets its place
    const Point at = onScreen(widget, x, y);
    clickAt(at.x, at.y);
    runFor(100);
  }
  /// All labels, one a line.
  std::string textOfTheContent() {
    std::string text;
    const std::function<void(GtkWidget*)> collect = [&](GtkWidget* widget) {
      if (GTK_IS_LABEL(widget)) text += std::string(gtk_label_get_text(GTK_LABEL(widget))) + "\n";
      for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
           child = gtk_widget_get_next_sibling(child))
        collect(child);
    };
    if (panel_->content() != nullptr) collect(panel_->content());
    return text;
  }
  std::string iconOfTheContent() {
    const auto icons = shownBelow(panel_->content(), [](GtkWidget* w) { return GTK_IS_IMAGE(w); });
    if (icons.size() != 1) return std::to_string(icons.size()) + " icons";
    const char* const name = gtk_image_get_icon_name(GTK_IMAGE(icons.front()));
    return name == nullptr ? "" : name;
  }
  /// Of the source text's first line, in pixels; 0 where none is shown.
  int lineHeight() {
    GtkTextView* const text = desktop::findShownDocument(panel_->content()).text;
    if (text == nullptr) return 0;
    GtkTextIter start;
    gtk_text_buffer_get_start_iter(gtk_text_view_get_buffer(text), &start);
    GdkRectangle place{};
    gtk_text_view_get_iter_location(text, &start, &place);
    return place.height;
  }
  bool closes() {
    return runUntil([&] { return closings_ == 1; }) && !panel_->isVisible();
  }

  TemporaryFolder folder_;
  XDesktop desktop_;
  std::unique_ptr<desktop::Panel> panel_;
  int finishedLoads_ = 0;
  int closings_ = 0;
  bool hasQuit_ = false;
};

}  // namespace lumisk::test
