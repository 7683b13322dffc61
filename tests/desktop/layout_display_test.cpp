// What of a layout is decided on screen: where texts break, what follows the person's text size.

#include <gtest/gtest.h>

#include <cmath>

#include "panel_on_screen.h"
#include "scoped_text_scale.h"
#include "ui/outline.h"

namespace lumisk::test {
namespace {

/// One view in a window that is large enough.
class ViewOnScreen {
 public:
  explicit ViewOnScreen(const ui::View& view) : element_(view, desktop::Axis::None, context_) {
    gtk_widget_set_halign(element_.widget(), GTK_ALIGN_CENTER);
    gtk_widget_set_valign(element_.widget(), GTK_ALIGN_CENTER);
    gtk_window_set_default_size(window_, 600, 300);
    gtk_window_set_child(window_, element_.widget());
    gtk_window_present(window_);
    runFor(300);
  }
  ~ViewOnScreen() {
    gtk_window_set_child(window_, nullptr);
    gtk_window_destroy(window_);
  }
  ViewOnScreen(const ViewOnScreen&) = delete;
  ViewOnScreen& operator=(const ViewOnScreen&) = delete;

  GtkWidget* widget() { return element_.widget(); }
  bool update(const ui::View& view) { return element_.update(view); }
  std::string outline() { return ui::outline(element_.readBack()); }
  std::vector<GtkLabel*> labels() {
    std::vector<GtkLabel*> found;
    for (GtkWidget* const widget :
         shownBelow(element_.widget(), [](GtkWidget* w) { return GTK_IS_LABEL(w) == TRUE; }))
      found.push_back(GTK_LABEL(widget));
    return found;
  }

 private:
  desktop::DesktopWebViews webViews_{Program::shared().liveViews};
  desktop::RenderContext context_{Program::shared().platform.platform(), webViews_};
  desktop::Element element_;
  GtkWindow* window_ = GTK_WINDOW(gtk_window_new());
};

ui::View column(const char* text, double width) {
  return ui::View(ui::Text{.text = text, .font = {.size = 12.0}})
      .with(ui::Frame{.width = width, .alignment = ui::HorizontalAlignment::Trailing});
}

double heightOf(GtkLabel* label) {
  int height = 0;
  pango_layout_get_pixel_size(gtk_label_get_layout(label), nullptr, &height);
  return height;
}

TEST(Layout, ALongDateBreaksAndIsNeverCut) {
  // Only the name is limited to a line: a date is read whole, however long it is in a language.
  for (const char* const date :
       {"23. September 2026 um 14:05", "23 сент. 2026 г., 14:05", "23 de set. de 2026 14:05",
        "2026年9月23日 14:05:59", "23 सित॰ 2026, 2:05 pm",
        "23\u00A0September\u00A02026\u00A014:05:59"}) {
    ViewOnScreen screen(column(date, 130));
    GtkLabel* const label = screen.labels().at(0);
    EXPECT_EQ(gtk_widget_get_width(screen.widget()), 130) << date;
    EXPECT_FALSE(pango_layout_is_ellipsized(gtk_label_get_layout(label))) << date;
    PangoRectangle words{};
    pango_layout_get_pixel_extents(gtk_label_get_layout(label), nullptr, &words);
    EXPECT_LE(words.width, 130) << date;
    EXPECT_GE(gtk_widget_get_height(screen.widget()), words.height) << date;
  }
}

// A row of a list shows one item after another.
TEST(Layout, LinesEndWhereTheirColumnEndsAlsoInTheNextItem) {
  ViewOnScreen screen(column("1 KB", 80));
  ASSERT_TRUE(screen.update(column("23 September 2026 at 14:05", 80)));
  runFor(100);
  GtkLabel* const label = screen.labels().at(0);
  PangoLayout* const layout = gtk_label_get_layout(label);
  ASSERT_GT(pango_layout_get_line_count(layout), 1);
  int left = 0;
  gtk_label_get_layout_offsets(label, &left, nullptr);
  double x = 0;
  gtk_widget_translate_coordinates(GTK_WIDGET(label), screen.widget(), left, 0, &x, nullptr);
  PangoLayoutIter* const line = pango_layout_get_iter(layout);
  do {
    PangoRectangle words{};
    pango_layout_iter_get_line_extents(line, nullptr, &words);
    EXPECT_NEAR(x + pango_units_to_double(words.x + words.width), 80, 2);
  } while (pango_layout_iter_next_line(line) != FALSE);
  pango_layout_iter_free(line);
}

TEST(Layout, ALongNameIsCutToOneLine) {
  const ui::View name = ui::View(ui::Text{.text = std::string(255, 'n'), .lineLimit = 1})
                            .with(ui::Frame{.width = 200});
  ViewOnScreen screen(name);
  PangoLayout* const layout = gtk_label_get_layout(screen.labels().at(0));
  EXPECT_EQ(pango_layout_get_line_count(layout), 1);
  EXPECT_TRUE(pango_layout_is_ellipsized(layout));
}

TEST(Layout, ALongNameComesAsNearToItsColumnsAsTheStackLetsIt) {
  // The spacer between them has no length of its own; the stack's spacing stands on both sides.
  const ui::View row =
      ui::View(ui::HStack{.spacing = 10,
                          .children = {ui::Text{.text = std::string(255, 'n'), .lineLimit = 1},
                                       ui::Spacer{.minLength = 0}, column("1 KB", 80)}})
          .with(ui::Frame{.width = 400});
  ViewOnScreen screen(row);
  GtkLabel* const name = screen.labels().at(0);
  EXPECT_EQ(gtk_widget_get_width(GTK_WIDGET(name)), 400 - 80 - 2 * 10);
}

TEST(Layout, TextSizesFollowThePersonsTextScaling) {
  const ui::View view = ui::VStack{
      .spacing = 0,
      .children = {ui::Text{.text = "sized", .font = {.size = 12.0}},
                   ui::Text{.text = "headline", .font = {.size = ui::TextStyle::Headline}},
                   ui::Text{.text = "caption", .font = {.size = ui::TextStyle::Caption}},
                   ui::Text{.text = "body"}, column("1 KB", 80)}};
  ViewOnScreen screen(view);
  const std::string outlineBefore = screen.outline();
  std::vector<double> before;
  for (GtkLabel* const label : screen.labels()) before.push_back(heightOf(label));
  const ScopedTextScale scale(2);
  const std::vector<GtkLabel*> labels = screen.labels();
  ASSERT_EQ(labels.size(), before.size());
  for (std::size_t i = 0; i < labels.size(); ++i)
    EXPECT_NEAR(heightOf(labels[i]), 2 * before[i], 3) << gtk_label_get_text(labels[i]);
  EXPECT_EQ(gtk_widget_get_width(gtk_widget_get_parent(GTK_WIDGET(labels.back()))), 2 * 80)
      << "a column is as wide as its texts want it";
  EXPECT_EQ(screen.outline(), outlineBefore) << "the layout is the same";
}

TEST(Layout, SizesInPointsAreThoseOfTheUsualScreen) {
  ViewOnScreen screen(ui::Text{.text = "x", .font = {.size = 13.0}});
  PangoLayout* const layout = gtk_label_get_layout(screen.labels().at(0));
  PangoAttrIterator* const first =
      pango_attr_list_get_iterator(pango_layout_get_attributes(layout));
  PangoFontDescription* const font = pango_font_description_new();
  pango_attr_iterator_get_font(first, font, nullptr, nullptr);
  EXPECT_EQ(pango_font_description_get_size(font), 13 * PANGO_SCALE * 72 / 96);
  pango_font_description_free(font);
  pango_attr_iterator_destroy(first);
}

TEST(Layout, PagesFollowThePersonsTextScaling) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "main.cpp"));
  // All of the page grows, so that less of it fits beside one another.
  const auto pageWidth = [&] {
    return std::stod(evaluate(panel->webViews().latestView(), "window.innerWidth"));
  };
  const double before = pageWidth();
  {
    const ScopedTextScale scale(2);
    EXPECT_TRUE(runUntil([&] { return std::abs(pageWidth() - before / 2) <= 1; }));
  }
  EXPECT_TRUE(runUntil([&] { return pageWidth() == before; }));
}

TEST(Layout, AnEmptyFoldersHeaderStandsWhereAFullOnesDoes) {
  const ItemsToShow items;
  PanelOnScreen panel;
  const auto placeOfHeader = [&](const char* name) {
    EXPECT_TRUE(panel.open(items / name));
    const auto icons = shownBelow(panel->content(), [](GtkWidget* w) { return GTK_IS_IMAGE(w); });
    graphene_rect_t box{};
    EXPECT_FALSE(icons.empty());
    if (icons.empty()) return box;
    EXPECT_TRUE(gtk_widget_compute_bounds(icons[0], panel->content(), &box));
    return box;
  };
  const graphene_rect_t full = placeOfHeader("folder");
  const graphene_rect_t empty = placeOfHeader("empty");
  EXPECT_EQ(full.origin.y, empty.origin.y);
  EXPECT_EQ(full.origin.x, empty.origin.x);
  EXPECT_EQ(full.origin.x, 12) << "the padding";
  // The message takes its own height below the line and stands in the middle of the width.
  const auto labels = shownBelow(panel->content(), [](GtkWidget* w) { return GTK_IS_LABEL(w); });
  const auto lines = shownBelow(panel->content(), [](GtkWidget* w) { return GTK_IS_SEPARATOR(w); });
  ASSERT_EQ(lines.size(), 1U);
  graphene_rect_t line{};
  graphene_rect_t message{};
  ASSERT_TRUE(gtk_widget_compute_bounds(lines[0], panel->content(), &line));
  ASSERT_TRUE(gtk_widget_compute_bounds(labels.back(), panel->content(), &message));
  EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(labels.back())), "This folder is empty");
  EXPECT_EQ(message.origin.y, line.origin.y + line.size.height);
  EXPECT_NEAR(message.origin.x + message.size.width / 2,
              gtk_widget_get_width(panel->content()) / 2.0, 1);
}

}  // namespace
}  // namespace lumisk::test
