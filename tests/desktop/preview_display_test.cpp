// Whole previews on screen: the widgets show what the view's value says, for every kind of item and
// in both appearances. The pictures that they make are kept for people to look at.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>

#include "desktop/accessible_name.h"
#include "desktop/page_drawing.h"
#include "desktop/picture.h"
#include "extension/mode_selection.h"
#include "folder/folder_preview_view.h"
#include "picture_reading.h"
#include "preview_on_screen.h"
#include "support/files.h"
#include "ui/outline.h"
#include "views/markdown_dual_preview_view.h"

namespace lumisk::test {
namespace {

using testing::HasSubstr;

constexpr const char* kItems[] = {"guide.md",   "data.json", "log.jsonl",
                                  "people.csv", "main.cpp",  "folder"};

void expectLightness(GdkTexture* picture, bool isDark) {
  if (isDark) {
    EXPECT_LT(meanLightness(picture), 80);
  } else {
    EXPECT_GT(meanLightness(picture), 200);
  }
}

TEST_F(PreviewTest, TheWidgetsShowWhatTheViewSays) {
  std::filesystem::create_directories(LUMISK_ARTEFACTS);
  for (const char* const item : kItems) {
    for (const bool isDark : {false, true}) {
      SCOPED_TRACE(std::string(item) + (isDark ? " dark" : " light"));
      Preview preview(folder_ / item, isDark);
      EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView()) << "before the load";
      ASSERT_TRUE(preview.finishes());
      EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView()) << "after the load";
      if (preview.page() != nullptr) {
        bool isDrawn = false;
        desktop::PageDrawing drawing;
        drawing.wait(preview.page(), [&] { isDrawn = true; });
        EXPECT_TRUE(runUntil([&] { return isDrawn; }));
      }
      runFor(400);
      desktop::GRef<GdkTexture> picture;
      ASSERT_TRUE(runUntil([&] {
        picture = desktop::pictureOf(preview.presentation().widget());
        return static_cast<bool>(picture);
      }));
      EXPECT_TRUE(desktop::writePicture(picture.get(), std::string(LUMISK_ARTEFACTS) + "/" + item +
                                                           (isDark ? "-dark.png" : "-light.png")));
      EXPECT_FALSE(desktop::isBlank(picture.get()));
      expectLightness(picture.get(), isDark);
      // Nor below the bars, which are never blank: the document's own part of it.
      const desktop::ShownDocument shown = preview.shown();
      GtkWidget* const document =
          shown.page != nullptr ? GTK_WIDGET(shown.page) : GTK_WIDGET(shown.scrolled);
      ASSERT_NE(document, nullptr);
      const auto own = desktop::pictureOf(document);
      ASSERT_TRUE(own);
      EXPECT_FALSE(desktop::isBlank(own.get()));
      // What is no page stands on the window's colour and has none of its own.
      if (shown.page != nullptr) expectLightness(own.get(), isDark);
    }
  }
}

/// The first widget below `root` that is wanted.
GtkWidget* firstBelow(GtkWidget* root, const std::function<bool(GtkWidget*)>& isWanted) {
  if (isWanted(root)) return root;
  for (GtkWidget* child = gtk_widget_get_first_child(root); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    if (GtkWidget* found = firstBelow(child, isWanted)) return found;
  return nullptr;
}

TEST_F(PreviewTest, WhatTheWidgetsShowInsteadIsReadBack) {
  struct Row {
    const char* label;
    const char* item;
    std::function<bool(GtkWidget*)> isWanted;
    std::function<void(GtkWidget*)> change;
  };
  const Row rows[] = {
      {"the icon of a file", "folder", [](GtkWidget* w) { return GTK_IS_IMAGE(w) == TRUE; },
       [](GtkWidget* w) { gtk_image_set_from_icon_name(GTK_IMAGE(w), "edit-copy"); }},
      {"the alignment in a stack", "folder",
       [](GtkWidget* w) { return gtk_widget_has_css_class(w, "heading") == TRUE; },
       [](GtkWidget* w) {
         GtkWidget* const column = gtk_widget_get_parent(w);
         for (GtkWidget* child = gtk_widget_get_first_child(column); child != nullptr;
              child = gtk_widget_get_next_sibling(child))
           gtk_widget_set_halign(child, GTK_ALIGN_END);
       }},
      {"the picker's name", "data.json",
       [](GtkWidget* w) { return gtk_widget_has_css_class(w, "mode-picker") == TRUE; },
       [](GtkWidget* w) { desktop::setAccessibleName(w, "Other"); }},
      {"the edge of a source", "guide.md", [](GtkWidget* w) { return GTK_IS_TEXT_VIEW(w) == TRUE; },
       [](GtkWidget* w) { gtk_text_view_set_justification(GTK_TEXT_VIEW(w), GTK_JUSTIFY_RIGHT); }},
      {"the width of a source", "guide.md",
       [](GtkWidget* w) { return GTK_IS_TEXT_VIEW(w) == TRUE; },
       [](GtkWidget* w) { gtk_widget_set_halign(w, GTK_ALIGN_START); }},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    Preview preview(folder_ / row.item);
    ASSERT_TRUE(preview.finishes());
    const bool isDocument = std::string_view(row.item) == "guide.md";
    ASSERT_TRUE(!isDocument || preview.presentation().selectMode("source"));
    ASSERT_EQ(preview.outlineOfWidgets(), preview.outlineOfView());
    GtkWidget* const widget = firstBelow(preview.presentation().widget(), [&](GtkWidget* each) {
      // The engine's view has widgets of its own inside.
      return gtk_widget_get_ancestor(each, WEBKIT_TYPE_WEB_VIEW) == nullptr && row.isWanted(each);
    });
    ASSERT_NE(widget, nullptr);
    row.change(widget);
    EXPECT_NE(preview.outlineOfWidgets(), preview.outlineOfView());
  }
}

TEST_F(PreviewTest, ASourceHasItsTextInTheViewOnceItIsSeen) {
  Preview preview(folder_ / "guide.md");
  ASSERT_TRUE(preview.finishes());
  const std::function<GtkTextView*(GtkWidget*)> sourceBelow = [&](GtkWidget* widget) {
    if (GTK_IS_TEXT_VIEW(widget) && gtk_text_view_get_monospace(GTK_TEXT_VIEW(widget)) == TRUE)
      return GTK_TEXT_VIEW(widget);
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child))
      if (GtkTextView* const found = sourceBelow(child)) return found;
    return static_cast<GtkTextView*>(nullptr);
  };
  GtkTextView* const source = sourceBelow(preview.presentation().widget());
  ASSERT_NE(source, nullptr);
  const auto size = [&] {
    return gtk_text_buffer_get_char_count(gtk_text_view_get_buffer(source));
  };
  auto* const scrolled = GTK_SCROLLED_WINDOW(gtk_widget_get_parent(GTK_WIDGET(source)));
  EXPECT_EQ(size(), 0);
  EXPECT_FALSE(gtk_scrolled_window_get_overlay_scrolling(scrolled)) << "bars that fade in and out";
  ASSERT_TRUE(preview.presentation().selectMode("source"));
  EXPECT_GT(size(), 100);
  EXPECT_TRUE(gtk_scrolled_window_get_overlay_scrolling(scrolled));
}

TEST_F(PreviewTest, TheSpinnerGoesWhenThePageIsThere) {
  Preview preview(folder_ / "guide.md");
  EXPECT_THAT(preview.outlineOfWidgets(), HasSubstr("progress"));
  ASSERT_TRUE(preview.finishes());
  EXPECT_THAT(preview.outlineOfWidgets(), Not(HasSubstr("progress")));
}

TEST_F(PreviewTest, TheModesOfADocumentShareOnePage) {
  Preview preview(folder_ / "guide.md");
  ASSERT_TRUE(preview.finishes());
  evaluate(preview.page(), "window.marker = 'kept'");
  WebKitWebView* const page = preview.page();
  ASSERT_TRUE(preview.presentation().selectMode("source"));
  EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView());
  EXPECT_EQ(preview.shown().page, nullptr) << "the hidden page is not what keys work on";
  ASSERT_NE(preview.shown().text, nullptr);
  ASSERT_TRUE(preview.presentation().selectMode("rendered"));
  runFor(200);
  EXPECT_EQ(preview.page(), page);
  EXPECT_EQ(preview.finishedLoads(), 1);
  EXPECT_EQ(evaluate(preview.page(), "window.marker"), "kept");
  EXPECT_EQ(preview.shown().page, page);
}

TEST_F(PreviewTest, TheModesOfDataAreTwoPages) {
  Preview preview(folder_ / "data.json");
  ASSERT_TRUE(preview.finishes());
  EXPECT_THAT(evaluate(preview.page(), "document.querySelector('pre').textContent"),
              HasSubstr("\"a\" : null\n"));
  ASSERT_TRUE(preview.presentation().selectMode("text"));
  ASSERT_TRUE(runUntil([&] { return preview.finishedLoads() == 2; }));
  EXPECT_EQ(evaluate(preview.page(), "document.querySelector('pre').textContent"),
            "{\"b\":[1,2],\"a\":null}");
  EXPECT_EQ(evaluate(preview.page(), "document.querySelectorAll('pre code.hljs').length"), "1");
}

/// Whether any pixel is of a red that no page has by itself.
bool hasRed(GdkTexture* picture) {
  const auto width = static_cast<std::size_t>(gdk_texture_get_width(picture));
  const auto height = static_cast<std::size_t>(gdk_texture_get_height(picture));
  std::vector<std::uint32_t> pixels(width * height);
  gdk_texture_download(picture, reinterpret_cast<guchar*>(pixels.data()), width * 4);
  return std::any_of(pixels.begin(), pixels.end(),
                     [](std::uint32_t pixel) { return (pixel & 0xffffff) == 0xff0000; });
}

TEST_F(PreviewTest, NothingIsSeenOfTheDocumentBefore) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "int value" + std::to_string(i) + " = 0;  // a line\n";
  writeAll(folder_ / "long.cpp", text);
  {
    Preview before(folder_ / "main.cpp");
    ASSERT_TRUE(before.finishes());
    evaluate(before.page(),
             "document.documentElement.style.background = "
             "document.body.style.background = '#ff0000'");
    ASSERT_TRUE(runUntil([&] {
      const auto picture = desktop::pictureOf(before.presentation().widget());
      return picture && hasRed(picture.get());
    }));
  }
  Preview preview(folder_ / "long.cpp");
  bool isRedSeen = false;
  ASSERT_TRUE(runUntil([&] {
    const auto picture = desktop::pictureOf(preview.presentation().widget());
    isRedSeen = isRedSeen || (picture && hasRed(picture.get()));
    runFor(5);  // else a slow machine does nothing but draw
    return preview.finishedLoads() > 0;
  }));
  EXPECT_FALSE(isRedSeen);
}

TEST_F(PreviewTest, RowsKeepTheirColumns) {
  Preview preview(folder_ / "folder");
  ASSERT_TRUE(preview.finishes());
  runFor(200);
  std::vector<int> widths;
  const std::function<void(GtkWidget*)> collect = [&](GtkWidget* widget) {
    if (GTK_IS_LABEL(widget) && gtk_widget_has_css_class(widget, "dim-label"))
      widths.push_back(gtk_widget_get_width(gtk_widget_get_parent(widget)));
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child))
      collect(child);
  };
  collect(GTK_WIDGET(preview.shown().scrolled));
  EXPECT_EQ(widths, (std::vector<int>{80, 130, 80, 130}));
}

TEST_F(PreviewTest, AnEmptyFolderSaysSo) {
  std::filesystem::create_directories(folder_ / "empty");
  Preview preview(folder_ / "empty");
  ASSERT_TRUE(preview.finishes());
  EXPECT_THAT(preview.outlineOfWidgets(), HasSubstr("This folder is empty"));
}

TEST_F(PreviewTest, ALongSourceComesInPieces) {
  std::string source = "# long\n\n";
  while (source.size() < 3'000'000) source += "A line of text, \u00fcber and out.\r\n";
  writeAll(folder_ / "long.md", source);
  Preview preview(folder_ / "long.md");
  ASSERT_TRUE(preview.presentation().selectMode("source"));
  GtkTextView* const text = preview.shown().text;
  ASSERT_NE(text, nullptr);
  GtkTextBuffer* const buffer = gtk_text_view_get_buffer(text);
  const int first = gtk_text_buffer_get_char_count(buffer);
  EXPECT_GT(first, 10'000) << "a screenful is there at once";
  const auto characters = static_cast<int>(g_utf8_strlen(source.data(), -1));
  EXPECT_LT(first, characters);
  EXPECT_TRUE(runUntil([&] { return gtk_text_buffer_get_char_count(buffer) == characters; }));
  GtkTextIter start;
  GtkTextIter end;
  gtk_text_buffer_get_bounds(buffer, &start, &end);
  char* const all = gtk_text_buffer_get_text(buffer, &start, &end, TRUE);
  EXPECT_TRUE(source == all) << "no byte is lost between the pieces";
  g_free(all);
}

TEST_F(PreviewTest, WhatIsHiddenTakesNoFocusAndNoClicks) {
  Preview preview(folder_ / "guide.md");
  ASSERT_TRUE(preview.finishes());
  const auto layerOf = [](GtkWidget* widget) {
    while (widget != nullptr && gtk_widget_get_opacity(widget) > 0)
      widget = gtk_widget_get_parent(widget);
    return widget;
  };
  ASSERT_TRUE(preview.presentation().selectMode("source"));
  GtkWidget* const layer = layerOf(GTK_WIDGET(preview.page()));
  ASSERT_NE(layer, nullptr);
  EXPECT_FALSE(gtk_widget_get_can_target(layer));
  EXPECT_FALSE(gtk_widget_get_can_focus(layer));
  EXPECT_FALSE(gtk_widget_grab_focus(GTK_WIDGET(preview.page())));
  ASSERT_TRUE(preview.presentation().selectMode("rendered"));
  EXPECT_EQ(layerOf(GTK_WIDGET(preview.page())), nullptr);
  EXPECT_TRUE(gtk_widget_grab_focus(GTK_WIDGET(preview.page())));
}

TEST_F(PreviewTest, PagesCannotReadOtherFiles) {
  Preview preview(folder_ / "guide.md");
  ASSERT_TRUE(preview.finishes());
  evaluate(preview.page(),
           "fetch('file:///etc/passwd').then(() => { window.read = 'yes' }, "
           "() => { window.read = 'no' }); 1");
  EXPECT_TRUE(runUntil([&] { return evaluate(preview.page(), "window.read") != "undefined"; }));
  EXPECT_EQ(evaluate(preview.page(), "window.read"), "no");
}

TEST_F(PreviewTest, WithoutTheExtensionPagesStillShowTheirText) {
  Program program({"/nonexistent", "/nonexistent"});
  PageOnScreen page("<!DOCTYPE html><body><p id=\"p\">text</p></body>", program);
  EXPECT_EQ(page("document.getElementById('p').textContent"), "text");
}

}  // namespace
}  // namespace lumisk::test
