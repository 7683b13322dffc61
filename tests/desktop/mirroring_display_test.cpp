// In a language that is written from right to left the panel is its own mirror image; what a
// document holds keeps its direction.

#include <gtest/gtest.h>

#include "panel_on_screen.h"

namespace lumisk::test {
namespace {

using desktop::Command;

class ScopedDirection {
 public:
  explicit ScopedDirection(GtkTextDirection direction) {
    gtk_widget_set_default_direction(direction);
  }
  ScopedDirection(const ScopedDirection&) = delete;
  ScopedDirection& operator=(const ScopedDirection&) = delete;
  ~ScopedDirection() { gtk_widget_set_default_direction(GTK_TEXT_DIR_LTR); }
};

/// Where something stands between the left edge of the window and the right one.
struct Span {
  std::string what;
  double left;
  double right;
};

/// Where a label's words are in its box, which may be wider.
Span wordsOf(GtkLabel* label, GtkWidget* root) {
  double left = 0;
  double top = 0;
  gtk_widget_translate_coordinates(GTK_WIDGET(label), root, 0, 0, &left, &top);
  int x = 0;
  gtk_label_get_layout_offsets(label, &x, nullptr);
  PangoRectangle words{};
  pango_layout_get_pixel_extents(gtk_label_get_layout(label), nullptr, &words);
  return {std::string("words of ") + gtk_label_get_text(label), left + x + words.x,
          left + x + words.x + words.width};
}

std::vector<Span> spansIn(GtkWidget* root) {
  std::vector<Span> spans;
  forEachShown(root, [&](GtkWidget* widget) {
    graphene_rect_t box;
    if (gtk_widget_compute_bounds(widget, root, &box) == FALSE) return;
    const double left = box.origin.x;
    spans.push_back({G_OBJECT_TYPE_NAME(widget), left, left + box.size.width});
    if (GTK_IS_LABEL(widget)) spans.push_back(wordsOf(GTK_LABEL(widget), root));
  });
  return spans;
}

/// Where everything stands when `path` is shown, once `prepare` has done what it has to do.
std::vector<Span> shownIn(GtkTextDirection direction, const std::filesystem::path& path,
                          const std::function<void(PanelOnScreen&)>& prepare, double& width) {
  const ScopedDirection scope(direction);
  PanelOnScreen panel;
  EXPECT_TRUE(panel.open(path));
  prepare(panel);
  runFor(300);
  width = gtk_widget_get_width(panel.root());
  return spansIn(panel.root());
}

void expectMirrored(
    const std::filesystem::path& path,
    const std::function<void(PanelOnScreen&)>& prepare = [](PanelOnScreen&) {}) {
  double width = 0;
  double mirroredWidth = 0;
  const auto usual = shownIn(GTK_TEXT_DIR_LTR, path, prepare, width);
  const auto mirrored = shownIn(GTK_TEXT_DIR_RTL, path, prepare, mirroredWidth);
  ASSERT_EQ(width, mirroredWidth);
  ASSERT_EQ(usual.size(), mirrored.size());
  ASSERT_GT(usual.size(), 10U);
  constexpr double kRounding = 2.5;  // what stands in the middle may be off by one on each side
  for (std::size_t i = 0; i < usual.size(); ++i) {
    EXPECT_EQ(usual[i].what, mirrored[i].what);
    EXPECT_NEAR(width - usual[i].right, mirrored[i].left, kRounding) << usual[i].what;
    EXPECT_NEAR(width - usual[i].left, mirrored[i].right, kRounding) << usual[i].what;
  }
}

TEST(Mirroring, EverythingStandsAtTheOtherSide) {
  const ItemsToShow items;
  for (const char* const name : ItemsToShow::kNames) {
    SCOPED_TRACE(name);
    expectMirrored(items / name);
  }
}

TEST(Mirroring, AlsoTheFindBar) {
  const ItemsToShow items;
  expectMirrored(items / "guide.md", [](PanelOnScreen& panel) {
    panel->perform(Command::Find);
    runFor(400);
  });
}

TEST(Mirroring, AlsoTheWayBack) {
  const ItemsToShow items;
  expectMirrored(items / "guide.md", [](PanelOnScreen& panel) { EXPECT_TRUE(panel.followLink()); });
}

TEST(Mirroring, AlsoADateThatTakesTwoLines) {
  // Each line of it ends at the trailing edge.
  const auto spansOf = [](GtkTextDirection direction, const char* date) {
    const ScopedDirection scope(direction);
    desktop::DesktopWebViews webViews(Program::shared().liveViews);
    desktop::RenderContext context{Program::shared().platform.platform(), webViews};
    const ui::View column =
        ui::View(ui::Text{.text = date, .font = {.size = 12.0}})
            .with(ui::Frame{.width = 130, .alignment = ui::HorizontalAlignment::Trailing});
    desktop::Element element(column, desktop::Axis::None, context);
    GtkWidget* const window = gtk_window_new();
    gtk_widget_set_halign(element.widget(), GTK_ALIGN_CENTER);
    gtk_window_set_child(GTK_WINDOW(window), element.widget());
    gtk_window_present(GTK_WINDOW(window));
    runFor(300);
    auto* label = GTK_LABEL(gtk_widget_get_first_child(element.widget()));
    PangoLayout* const layout = gtk_label_get_layout(label);
    EXPECT_GE(pango_layout_get_line_count(layout), 2);
    int offset = 0;
    gtk_label_get_layout_offsets(label, &offset, nullptr);
    graphene_rect_t box;
    EXPECT_TRUE(gtk_widget_compute_bounds(GTK_WIDGET(label), element.widget(), &box));
    std::vector<Span> lines;
    PangoLayoutIter* const line = pango_layout_get_iter(layout);
    do {
      PangoRectangle words{};
      pango_layout_iter_get_line_extents(line, nullptr, &words);
      const double left =
          static_cast<double>(box.origin.x) + offset + static_cast<double>(words.x) / PANGO_SCALE;
      lines.push_back({"line", left, left + static_cast<double>(words.width) / PANGO_SCALE});
    } while (pango_layout_iter_next_line(line) == TRUE);
    pango_layout_iter_free(line);
    gtk_window_set_child(GTK_WINDOW(window), nullptr);
    gtk_window_destroy(GTK_WINDOW(window));
    return lines;
  };
  constexpr double kSpace = 5;  // a blank at the end of a line may count as a part of it
  for (const Span& line : spansOf(GTK_TEXT_DIR_LTR, "23 сентября 2026 года, 14:05:59"))
    EXPECT_NEAR(line.right, 130, kSpace);
  for (const Span& line : spansOf(GTK_TEXT_DIR_RTL, "23 سبتمبر 2026 الساعة 2:05:59 م"))
    EXPECT_NEAR(line.left, 0, kSpace);
}

TEST(Mirroring, DocumentsKeepTheirDirection) {
  const ItemsToShow items;
  const ScopedDirection scope(GTK_TEXT_DIR_RTL);
  PanelOnScreen panel;
  for (const char* const name : {"main.cpp", "data.json", "guide.md", "table.csv"}) {
    ASSERT_TRUE(panel.open(items / name));
    EXPECT_EQ(evaluate(panel->webViews().latestView(), "getComputedStyle(document.body).direction"),
              "ltr")
        << name;
  }
}

TEST(Mirroring, SourceStaysFromLeftToRight) {
  const ItemsToShow items;
  const ScopedDirection scope(GTK_TEXT_DIR_RTL);
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "guide.md"));
  ASSERT_TRUE(panel->presentation()->selectMode("source"));
  runFor(200);
  GtkTextView* const text = desktop::findShownDocument(panel->content()).text;
  ASSERT_NE(text, nullptr);
  GtkTextBuffer* const buffer = gtk_text_view_get_buffer(text);
  // "```c", of which only the last letter has a direction, and the blank line before it.
  for (const int line : {0, 3, 4}) {
    GtkTextIter start;
    gtk_text_buffer_get_iter_at_line(buffer, &start, line);
    GdkRectangle place;
    gtk_text_view_get_iter_location(text, &start, &place);
    EXPECT_LT(place.x, 40) << "line " << line << " begins at the left";
  }
}

}  // namespace
}  // namespace lumisk::test
