// What stands over and above a document: the spinner while it loads, the strip with its modes.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel_on_screen.h"
#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

constexpr float kRounding = 1;
constexpr float kPadding = 8;

class ModeBar : public PreviewTest {
 protected:
  static graphene_rect_t boxIn(GtkWidget* widget, GtkWidget* root) {
    graphene_rect_t box{};
    EXPECT_TRUE(gtk_widget_compute_bounds(widget, root, &box));
    return box;
  }
  static std::vector<GtkWidget*> spinnersIn(Preview& preview) {
    return shownBelow(preview.presentation().widget(),
                      [](GtkWidget* widget) { return GTK_IS_SPINNER(widget) == TRUE; });
  }
};

TEST_F(ModeBar, TheSpinnerTurnsInTheMiddleOfAPageThatLoads) {
  // A page that never finishes; it closes the holder of its source, so that the script is its own.
  writeAll(folder_ / "hangs.md", "# Hangs\n\n</script><script>while (true);</script>");
  Preview preview(folder_ / "hangs.md");
  ASSERT_TRUE(runUntil([&] { return !spinnersIn(preview).empty(); }));
  runFor(300);
  const std::vector<GtkWidget*> spinners = spinnersIn(preview);
  ASSERT_EQ(spinners.size(), 1U);
  EXPECT_TRUE(gtk_spinner_get_spinning(GTK_SPINNER(spinners[0])));
  EXPECT_TRUE(runUntil([&] { return framesWithin(spinners[0], 200) > 3; })) << "it turns";
  GtkWidget* const page = GTK_WIDGET(preview.page());
  const graphene_rect_t spinner = boxIn(spinners[0], page);
  EXPECT_GE(spinner.size.width, 16);
  EXPECT_NEAR(spinner.origin.x + spinner.size.width / 2,
              static_cast<float>(gtk_widget_get_width(page)) / 2, kRounding);
  EXPECT_NEAR(spinner.origin.y + spinner.size.height / 2,
              static_cast<float>(gtk_widget_get_height(page)) / 2, kRounding);
  ASSERT_TRUE(preview.presentation().selectMode("source"));
  runFor(100);
  EXPECT_TRUE(spinnersIn(preview).empty()) << "it belongs to the page";
}

TEST_F(ModeBar, TheSpinnerKeepsStillForAMoment) {
  Preview preview(folder_ / "guide.md");
  const std::vector<GtkWidget*> spinners = spinnersIn(preview);
  ASSERT_EQ(spinners.size(), 1U);
  EXPECT_TRUE(gtk_widget_has_css_class(spinners[0], "at-rest"));
}

TEST_F(ModeBar, ASpinnerAtRestDrawsNoFrames) {
  GtkWindow* const window = GTK_WINDOW(gtk_window_new());
  desktop::installStyle(gtk_widget_get_display(GTK_WIDGET(window)));
  GtkWidget* const spinner = gtk_spinner_new();
  gtk_widget_add_css_class(spinner, "at-rest");
  gtk_spinner_start(GTK_SPINNER(spinner));
  gtk_window_set_child(window, spinner);
  gtk_window_present(window);
  EXPECT_TRUE(runUntil([&] { return framesWithin(spinner, 300) == 0; }));
  gtk_widget_remove_css_class(spinner, "at-rest");
  EXPECT_TRUE(runUntil([&] { return framesWithin(spinner, 200) > 3; }));
  gtk_window_destroy(window);
}

TEST_F(ModeBar, NothingTurnsOnceThePageIsThere) {
  Preview preview(folder_ / "guide.md");
  ASSERT_TRUE(preview.finishes());
  runFor(100);
  EXPECT_TRUE(spinnersIn(preview).empty());
}

TEST_F(ModeBar, ThePickerHasItsOwnSizeAndPlace) {
  const struct {
    const char* item;
    bool isInTheMiddle;  ///< else at the trailing edge
  } rows[] = {{"guide.md", false}, {"data.json", true}, {"log.jsonl", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.item);
    Preview preview(folder_ / row.item);
    ASSERT_TRUE(preview.finishes());
    runFor(200);
    GtkWidget* const root = preview.presentation().widget();
    const auto pickers = shownBelow(root, [](GtkWidget* widget) {
      return gtk_widget_has_css_class(widget, "mode-picker") == TRUE;
    });
    ASSERT_EQ(pickers.size(), 1U);
    GtkRequisition natural{};
    gtk_widget_get_preferred_size(pickers[0], nullptr, &natural);
    const graphene_rect_t picker = boxIn(pickers[0], root);
    const auto width = static_cast<float>(gtk_widget_get_width(root));
    ASSERT_GT(width, static_cast<float>(natural.width) + 4 * kPadding) << "there is room to spare";
    EXPECT_EQ(picker.size.width, static_cast<float>(natural.width));
    EXPECT_EQ(picker.size.height, static_cast<float>(natural.height));
    const float trailing = picker.origin.x + picker.size.width;
    if (row.isInTheMiddle) {
      EXPECT_NEAR(picker.origin.x, width - trailing, kRounding);
    } else {
      EXPECT_NEAR(trailing, width - kPadding, kRounding);
    }
    EXPECT_NEAR(picker.origin.y, kPadding, kRounding);
    const auto lines =
        shownBelow(root, [](GtkWidget* widget) { return GTK_IS_SEPARATOR(widget) == TRUE; });
    ASSERT_EQ(lines.size(), 1U);
    const graphene_rect_t line = boxIn(lines[0], root);
    EXPECT_NEAR(line.origin.y, picker.origin.y + picker.size.height + kPadding, kRounding);
    EXPECT_EQ(line.size.width, width);
    const graphene_rect_t page = boxIn(GTK_WIDGET(preview.page()), root);
    EXPECT_NEAR(page.origin.y, line.origin.y + line.size.height, kRounding);
    EXPECT_EQ(page.size.width, width);
  }
}

}  // namespace
}  // namespace lumisk::test
