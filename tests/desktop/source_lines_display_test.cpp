// Lines of a source text that are longer than the window is wide: they wrap, and none is cut off.

#include <gtest/gtest.h>

#include "desktop/document_control.h"
#include "screen.h"
#include "source_texts.h"

namespace lumisk::test {
namespace {

TEST(LongLineOnScreen, IsWrappedAtEverySize) {
  struct Row {
    const char* label;
    std::string text;
  };
  const Row rows[] = {{"words", repeated("some words and ", 3000)},
                      {"one long word", std::string(900, 'w')},
                      {"a very long word", numbers(20'000)},
                      {"wide letters", repeated("\u6c34", 3000)}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    desktop::SourceText source;
    source.setText(row.text);
    source.fillNow();
    source.show();
    GtkWindow* const window = GTK_WINDOW(gtk_window_new());
    GtkWidget* const scrolled = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled), source.widget());
    gtk_window_set_child(window, scrolled);
    gtk_window_set_default_size(window, 600, 400);
    gtk_window_present(window);
    GtkAdjustment* const across =
        gtk_scrolled_window_get_hadjustment(GTK_SCROLLED_WINDOW(scrolled));
    GtkAdjustment* const down = gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(scrolled));
    double height = 0;
    for (const double zoom : {1.0, 3.0}) {
      desktop::setZoom(source.widget(), zoom);
      EXPECT_TRUE(runUntil([&] { return gtk_adjustment_get_upper(down) > height + 50; })) << zoom;
      runFor(300);
      height = gtk_adjustment_get_upper(down);
      EXPECT_GT(gtk_adjustment_get_page_size(across), 500) << zoom;
      constexpr double kRounding = 1;
      EXPECT_LE(gtk_adjustment_get_upper(across), gtk_adjustment_get_page_size(across) + kRounding)
          << zoom;
    }
    gtk_window_set_child(window, nullptr);
    gtk_window_destroy(window);
  }
}

}  // namespace
}  // namespace lumisk::test
