// The panel as a person uses it, keys pressed for real.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "desktop/document_control.h"
#include "panel_test.h"

namespace lumisk::test {
namespace {

using desktop::Command;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(PanelTest, IsTitledByTheItem) {
  open("long.md");
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "long.md");
  open("data.csv");
  EXPECT_STREQ(gtk_window_get_title(panel_->window()), "data.csv");
}

TEST_F(PanelTest, HasTheIconOfTheProgram) {
  EXPECT_STREQ(gtk_window_get_icon_name(panel_->window()), "org.lumisk.Previewer");
}

TEST_F(PanelTest, AnotherItemLeavesTheKeyboardWhereItIs) {
  open("long.md");
  GtkWidget* other = gtk_window_new();
  gtk_window_present(GTK_WINDOW(other));
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(GTK_WINDOW(other)) == TRUE; }));
  panel_->show(FileURL::fromPath((folder_ / "data.csv").string()));
  runFor(300);
  EXPECT_TRUE(gtk_window_is_active(GTK_WINDOW(other)));
  panel_->present();
  EXPECT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  gtk_window_destroy(GTK_WINDOW(other));
}

TEST_F(PanelTest, KeysScrollPageAndSource) {
  struct Row {
    const char* mode;
    std::function<double()> top;
  };
  const auto adjustment = [&] {
    return gtk_scrolled_window_get_vadjustment(
        desktop::findShownDocument(panel_->content()).scrolled);
  };
  const Row rows[] = {{"rendered", [&] { return scrollTop(); }},
                      {"source", [&] { return gtk_adjustment_get_value(adjustment()); }}};
  open("long.md");
  for (const Row& row : rows) {
    const auto& top = row.top;
    SCOPED_TRACE(row.mode);
    ASSERT_TRUE(panel_->presentation()->selectMode(row.mode));
    runFor(100);
    if (row.mode == std::string("source")) {
      EXPECT_TRUE(runUntil([&] { return gtk_adjustment_get_upper(adjustment()) > 3000; }));
    }
    press("Page_Down");
    ASSERT_TRUE(runUntil([&] { return top() > 100; }));
    const double page = top();
    press("shift+Down");
    EXPECT_TRUE(runUntil([&] { return top() == page + 40; })) << top();
    press("shift+Up");
    EXPECT_TRUE(runUntil([&] { return top() == page; })) << top();
    press("Page_Down");
    EXPECT_TRUE(runUntil([&] { return top() > 1.9 * page; })) << top();
    press("Page_Up");
    constexpr double kRounding = 2;  // a page is no whole number of pixels
    EXPECT_TRUE(runUntil([&] { return std::abs(top() - page) <= kRounding; })) << top();
    press("End");
    EXPECT_TRUE(runUntil([&] { return top() > 3 * page; })) << top();
    const double end = top();
    press("Page_Down");
    runFor(100);
    EXPECT_EQ(top(), end) << "there is nothing below";
    press("Home");
    EXPECT_TRUE(runUntil([&] { return top() == 0; })) << top();
  }
}

TEST_F(PanelTest, ArrowsChooseTheModeInThePicker) {
  open("long.md");
  GtkWidget* focus = nullptr;
  for (int i = 0; i < 12; ++i) {
    focus = gtk_root_get_focus(GTK_ROOT(panel_->window()));
    const bool isInContent = focus != nullptr && GTK_IS_TOGGLE_BUTTON(focus) &&
                             gtk_widget_is_ancestor(focus, panel_->content());
    if (isInContent) break;
    press("Tab");
  }
  ASSERT_TRUE(focus != nullptr && GTK_IS_TOGGLE_BUTTON(focus));
  EXPECT_STREQ(gtk_button_get_label(GTK_BUTTON(focus)), "Preview");
  press("Right");
  EXPECT_NE(desktop::findShownDocument(panel_->content()).text, nullptr);
  press("Right");  // around the end
  EXPECT_EQ(desktop::findShownDocument(panel_->content()).text, nullptr);
  press("Left");
  EXPECT_NE(desktop::findShownDocument(panel_->content()).text, nullptr);
}

TEST_F(PanelTest, ArrowsMoveTheSelectionOfWhoeverListens) {
  open("data.csv");
  std::vector<desktop::SelectionStep> steps;
  panel_->onSelectionStep = [&](desktop::SelectionStep step) { steps.push_back(step); };
  press("Down Left shift+Down");
  EXPECT_TRUE(runUntil([&] { return steps.size() >= 2; }));
  using enum desktop::SelectionStep;
  EXPECT_EQ(steps, (std::vector<desktop::SelectionStep>{Down, Left}));
}

TEST_F(PanelTest, OpenedAgainThePageHasTheKeysAgain) {
  std::vector<desktop::SelectionStep> steps;
  panel_->onSelectionStep = [&](desktop::SelectionStep step) { steps.push_back(step); };
  for (const char* name : {"long.md", "long.md", "data.csv"}) {
    open(name);
    press("Right");
    EXPECT_TRUE(runUntil([&] { return !steps.empty(); })) << "not a move in the picker";
    EXPECT_TRUE(WEBKIT_IS_WEB_VIEW(gtk_root_get_focus(GTK_ROOT(panel_->window()))));
    steps.clear();
    panel_->close();
  }
}

TEST_F(PanelTest, FindsInThePage) {
  open("long.md");
  press("ctrl+f");
  ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  press("t i d e s");
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "301 matches"; }))
      << panel_->findBar().countText();
  press("x");
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "No matches"; }));
  press("Escape");
  EXPECT_TRUE(runUntil([&] { return !panel_->findBar().isOpen(); }));
  EXPECT_TRUE(panel_->isVisible()) << "the first Escape closes the bar only";
  press("Escape");
  EXPECT_TRUE(closes());
}

TEST_F(PanelTest, GoesThroughTheMatchesInThePage) {
  open("long.md");
  press("ctrl+f");
  ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  press("t i d e s");
  const auto goesTo = [&](const std::string& text) {
    return runUntil([&] {
      return evaluate(page(),
                      "getSelection().toString() + ' in ' + "
                      "getSelection().anchorNode?.textContent") == text;
    });
  };
  EXPECT_TRUE(goesTo("Tides in Tides"));
  struct Row {
    const char* keys;
    const char* text;
  };
  const Row rows[] = {
      {"Return", "tides in Line 0 of tides."},       {"F3", "tides in Line 1 of tides."},
      {"ctrl+g", "tides in Line 2 of tides."},       {"shift+F3", "tides in Line 1 of tides."},
      {"ctrl+shift+g", "tides in Line 0 of tides."}, {"shift+F3", "Tides in Tides"}};
  for (const Row& row : rows) {
    press(row.keys);
    EXPECT_TRUE(goesTo(row.text)) << row.keys << ", then " << row.text;
  }
  EXPECT_LT(scrollTop(), 100);
  press("ctrl+shift+g");
  EXPECT_TRUE(goesTo("tides in Line 299 of tides.")) << "backwards around the start";
  EXPECT_TRUE(runUntil([&] { return scrollTop() > 1000; })) << "and is seen";
  press("Return");
  EXPECT_TRUE(goesTo("Tides in Tides")) << "and forwards around the end";
  EXPECT_TRUE(runUntil([&] { return scrollTop() < 100; }));
}

TEST_F(PanelTest, FindsInTheSource) {
  open("long.md");
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  press("ctrl+f");
  ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  press("T I D E S");
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "301 matches"; }))
      << panel_->findBar().countText();
  GtkTextBuffer* const buffer =
      gtk_text_view_get_buffer(desktop::findShownDocument(panel_->content()).text);
  const auto selectionStart = [&] {
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_selection_bounds(buffer, &start, &end);
    return gtk_text_iter_get_offset(&start);
  };
  EXPECT_EQ(selectionStart(), 2);
  press("Return");
  EXPECT_TRUE(runUntil([&] { return selectionStart() > 2; }));
  press("shift+F3");
  EXPECT_TRUE(runUntil([&] { return selectionStart() == 2; }));
  press("ctrl+shift+g");
  EXPECT_TRUE(runUntil([&] { return selectionStart() > 5000; })) << "backwards around the start";
}

TEST_F(PanelTest, ZoomsPageAndSource) {
  open("long.md");
  press("ctrl+plus ctrl+plus");
  EXPECT_TRUE(runUntil([&] { return webkit_web_view_get_zoom_level(page()) > 1.2; }));
  press("ctrl+minus");
  EXPECT_TRUE(runUntil([&] { return webkit_web_view_get_zoom_level(page()) < 1.15; }));
  press("ctrl+0");
  EXPECT_TRUE(runUntil([&] { return webkit_web_view_get_zoom_level(page()) == 1; }));
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  ASSERT_TRUE(runUntil([&] { return lineHeight() > 0; }));
  const double usual = lineHeight();
  press("ctrl+plus ctrl+plus");
  EXPECT_TRUE(runUntil([&] { return lineHeight() > 1.1 * usual; }));
  runFor(100);
  EXPECT_NEAR(lineHeight() / usual, 1.21, 0.08) << usual;
  press("ctrl+0");
  EXPECT_TRUE(runUntil([&] { return lineHeight() == usual; }));
  press("ctrl+plus");
  open("data.csv");
  EXPECT_EQ(webkit_web_view_get_zoom_level(page()), 1) << "the next document has its own size";
  open("long.md");
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  EXPECT_TRUE(runUntil([&] { return lineHeight() == usual; })) << "in every mode";
}

TEST_F(PanelTest, F5PreparesTheItemAnew) {
  open("long.md");
  writeAll(folder_ / "long.md", "# Changed");
  press("F5");
  EXPECT_TRUE(runUntil([&] {
    return page() != nullptr && finishedLoads_ > 1 &&
           evaluate(page(), "document.querySelector('h1').textContent") == "Changed";
  }));
}

TEST_F(PanelTest, F5SaysThatTheFileHasGone) {
  open("long.md");
  const std::string text = readAll(folder_ / "long.md");
  std::filesystem::remove(folder_ / "long.md");
  press("F5");
  EXPECT_TRUE(runUntil([&] { return panel_->presentation() == nullptr; }));
  EXPECT_EQ(textOfTheContent(), "long.md\nThis item is no longer there.\n");
  EXPECT_TRUE(panel_->isVisible());
  writeAll(folder_ / "long.md", text);
  finishedLoads_ = 0;
  press("F5");
  EXPECT_TRUE(runUntil([&] { return finishedLoads_ == 1; })) << "and that it is back";
}

TEST_F(PanelTest, F11FillsTheScreen) {
  open("data.csv");
  press("F11");
  EXPECT_TRUE(runUntil([&] { return gtk_window_is_fullscreen(panel_->window()) == TRUE; }));
  press("F11");
  EXPECT_TRUE(runUntil([&] { return gtk_window_is_fullscreen(panel_->window()) == FALSE; }));
}

TEST_F(PanelTest, CopiesTheSelection) {
  open("long.md");
  std::string copied;
  GdkClipboard* const clipboard = gtk_widget_get_clipboard(GTK_WIDGET(panel_->window()));
  const auto read = [](GObject* source, GAsyncResult* result, gpointer data) {
    char* text = gdk_clipboard_read_text_finish(GDK_CLIPBOARD(source), result, nullptr);
    if (text != nullptr) *static_cast<std::string*>(data) = text;
    g_free(text);
  };
  const auto copies = [&](const std::string& text) {
    press("ctrl+c");
    return runUntil([&] {
      gdk_clipboard_read_text_async(clipboard, nullptr, read, &copied);
      runFor(100);
      return copied == text;
    });
  };
  evaluate(page(), "getSelection().selectAllChildren(document.querySelector('h1')), 1");
  EXPECT_TRUE(copies("Tides")) << copied;
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  GtkTextBuffer* const buffer =
      gtk_text_view_get_buffer(desktop::findShownDocument(panel_->content()).text);
  GtkTextIter start;
  GtkTextIter end;
  gtk_text_buffer_get_start_iter(buffer, &start);
  gtk_text_buffer_get_iter_at_offset(buffer, &end, 7);
  gtk_text_buffer_select_range(buffer, &start, &end);
  EXPECT_TRUE(copies("# Tides")) << copied;
}

TEST_F(PanelTest, ALinkOpensInsideAndCanBeGoneBackFrom) {
  open("long.md");
  EXPECT_FALSE(panel_->webViews().canGoBack());
  evaluate(page(), "document.querySelector('a').click(), 1");
  ASSERT_TRUE(runUntil([&] { return panel_->webViews().canGoBack() && finishedLoads_ == 2; }));
  EXPECT_EQ(evaluate(page(), "document.getElementById('next').textContent"), "next");
  press("alt+Left");
  ASSERT_TRUE(runUntil([&] { return !panel_->webViews().canGoBack() && finishedLoads_ == 3; }));
  EXPECT_EQ(evaluate(page(), "document.querySelector('h1').textContent"), "Tides");
}

TEST_F(PanelTest, WhatIsNoTextIsDescribed) {
  open("picture.png");
  EXPECT_EQ(panel_->presentation(), nullptr);
  const std::string text = textOfTheContent();
  EXPECT_THAT(text, HasSubstr("picture.png\nFiles of the kind “PNG image” have no preview.\n"));
  EXPECT_THAT(text, HasSubstr("PNG image · 17 bytes"));
  EXPECT_THAT(text, HasSubstr("Modified "));
  EXPECT_THAT(iconOfTheContent(), StartsWith("image-"));
}

TEST_F(PanelTest, ACalmPageHasTheIconOfItsItem) {
  writeAll(folder_ / "sound.mp3", "ID3\xff\xfb");
  open("sound.mp3");
  EXPECT_THAT(iconOfTheContent(), StartsWith("audio-"));
  panel_->showUnavailable("a.md", "It is elsewhere.");
  EXPECT_EQ(iconOfTheContent(), "dialog-error-symbolic");
}

TEST_F(PanelTest, AFileThatHasGoneIsSaidToBe) {
  open("gone.md");
  EXPECT_EQ(panel_->presentation(), nullptr);
  EXPECT_EQ(textOfTheContent(), "gone.md\nThis item is no longer there.\n");
  open("data.csv");
  EXPECT_NE(panel_->presentation(), nullptr) << "the next preview is unharmed";
}

TEST_F(PanelTest, ADeadWebProcessIsReportedAndTheNextPreviewWorks) {
  open("long.md");
  webkit_web_view_terminate_web_process(page());
  ASSERT_TRUE(runUntil([&] { return panel_->presentation() == nullptr; }));
  EXPECT_TRUE(panel_->isVisible());
  finishedLoads_ = 0;
  press("F5");
  ASSERT_TRUE(runUntil([&] { return finishedLoads_ == 1; }));
  EXPECT_EQ(evaluate(page(), "document.querySelector('h1').textContent"), "Tides");
}

TEST_F(PanelTest, TheSizeThatThePersonChoseStays) {
  open("data.csv");
  const auto width = [&] { return gtk_widget_get_width(GTK_WIDGET(panel_->window())); };
  const int given = width();
  gtk_window_set_default_size(panel_->window(), 500, 400);
  ASSERT_TRUE(runUntil([&] { return width() != given; }));
  const int chosen = width();
  panel_->close();
  open("long.md");
  EXPECT_TRUE(runUntil([&] { return width() == chosen; })) << width();
}

TEST_F(PanelTest, APageOf50MegabytesLeavesThePanelItsKeys) {
  std::string text;
  while (text.size() < 50'000'000) text += "A line of a log that is as long as such lines are.\n";
  writeAll(folder_ / "long.txt", text);
  panel_->show(FileURL::fromPath((folder_ / "long.txt").string()));
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  press("space");
  EXPECT_TRUE(closes()) << "while it is made ready";
  closings_ = 0;
  panel_->show(FileURL::fromPath((folder_ / "long.txt").string()));
  ASSERT_TRUE(runUntil([&] { return panel_->presentation() != nullptr; }));
  ASSERT_TRUE(runUntil([&] { return gtk_window_is_active(panel_->window()) == TRUE; }));
  press("space");
  EXPECT_TRUE(closes()) << "while its page is loaded";
  open("gone.md");
  EXPECT_THAT(textOfTheContent(), HasSubstr("no longer there")) << "and the next one is shown";
}

// --- the program ---

TEST_F(PanelTest, ALargeDocumentTakesItsWebViewWithIt) {
  writeAll(folder_ / "large.md", "# Large\n\n<!--" + std::string(3'000'000, 'x') + "-->\n");
  ASSERT_NO_FATAL_FAILURE(open("large.md"));
  gpointer large = page();
  g_object_add_weak_pointer(G_OBJECT(large), &large);
  panel_->close();
  EXPECT_TRUE(runUntil([&] { return large == nullptr; }));
  EXPECT_TRUE(runUntil([] { return Program::shared().liveViews.hasWarmView(); }))
      << "the next one is not kept waiting";
  ASSERT_NO_FATAL_FAILURE(open("data.csv"));
  gpointer usual = page();
  g_object_add_weak_pointer(G_OBJECT(usual), &usual);
  panel_->close();
  runFor(100);
  EXPECT_NE(usual, nullptr) << "it is kept for the next";
  if (usual != nullptr) g_object_remove_weak_pointer(G_OBJECT(usual), &usual);
}

}  // namespace
}  // namespace lumisk::test
