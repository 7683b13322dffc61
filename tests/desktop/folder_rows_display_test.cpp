// Folders on screen: rows are made for what is seen of them, and let go of with the list.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "panel_on_screen.h"
#include "preview_on_screen.h"
#include "support/outlines.h"

namespace lumisk::test {
namespace {

/// The toolkit makes so many rows beyond those that are seen.
constexpr std::size_t kRowsBeyondTheScreen = 200;

void visitAll(GtkWidget* widget, const std::function<void(GtkWidget*)>& visit) {
  visit(widget);
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    visitAll(child, visit);
}

GtkWidget* listBelow(GtkWidget* root) {
  GtkWidget* list = nullptr;
  visitAll(root, [&](GtkWidget* widget) {
    if (GTK_IS_LIST_VIEW(widget)) list = widget;
  });
  return list;
}

/// The names in the rows that there are, seen or not: in each the first text.
std::set<std::string> namesIn(GtkWidget* list) {
  std::set<std::string> names;
  for (GtkWidget* row = gtk_widget_get_first_child(list); row != nullptr;
       row = gtk_widget_get_next_sibling(row)) {
    std::string name;
    visitAll(row, [&](GtkWidget* widget) {
      if (GTK_IS_LABEL(widget) && name.empty()) name = gtk_label_get_text(GTK_LABEL(widget));
    });
    names.insert(name);
  }
  return names;
}

/// "00042": in the order of the names.
std::string entryName(int number) {
  const std::string digits = std::to_string(number);
  return std::string(5 - digits.size(), '0') + digits;
}

TEST(FolderRows, OfALargeFolderAreThoseOnScreen) {
  constexpr int kEntries = 100'000;
  const TemporaryFolder folder;
  for (int i = 0; i < kEntries; ++i) std::ofstream(folder / entryName(i));
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(folder.path()));
  ASSERT_TRUE(runUntil([&] { return listBelow(panel.root()) != nullptr; }));
  GtkWidget* const list = listBelow(panel.root());
  ASSERT_TRUE(runUntil([&] { return namesIn(list).contains(entryName(0)); }));
  const std::size_t rows = namesIn(list).size();
  // No row is lower than its icon of 20 pixels.
  const auto onScreen = static_cast<std::size_t>(gtk_widget_get_height(list)) / 20 + 1;
  EXPECT_LE(rows, onScreen + kRowsBeyondTheScreen + 1);
  EXPECT_GT(rows, 10U);

  panel->perform(desktop::Command::ToEnd);
  ASSERT_TRUE(runUntil([&] { return namesIn(list).contains(entryName(kEntries - 1)); }));
  const std::set<std::string> last = namesIn(list);
  EXPECT_LE(last.size(), onScreen + kRowsBeyondTheScreen + 1) << "the first ones serve the last";
  const auto isNearTheEnd = [&](const std::string& name) {
    return name > entryName(kEntries - 1 - static_cast<int>(last.size())) || name == entryName(0);
  };
  EXPECT_TRUE(std::all_of(last.begin(), last.end(), isNearTheEnd));
}

class FolderRowsInPreview : public PreviewTest {};

TEST_F(FolderRowsInPreview, AllShowWhatTheViewSays) {
  std::filesystem::create_directories(folder_ / "large");
  for (int i = 0; i < 1000; ++i) std::ofstream(folder_ / ("large/" + entryName(i))).put('x');
  Preview preview(folder_ / "large");
  ASSERT_TRUE(preview.finishes());
  runFor(200);
  EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView());
}

/// All texts below the widget, from the leading edge on.
std::vector<std::string> textsOf(GtkWidget* row) {
  std::vector<std::string> texts;
  visitAll(row, [&](GtkWidget* widget) {
    if (GTK_IS_LABEL(widget)) texts.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
  });
  return texts;
}

/// The rows on screen, from the top down.
std::vector<GtkWidget*> rowsOnScreen(GtkWidget* list) {
  std::vector<std::pair<float, GtkWidget*>> rows;
  const auto height = static_cast<float>(gtk_widget_get_height(list));
  for (GtkWidget* row = gtk_widget_get_first_child(list); row != nullptr;
       row = gtk_widget_get_next_sibling(row)) {
    graphene_rect_t box{};
    if (gtk_widget_get_mapped(row) == FALSE || !gtk_widget_compute_bounds(row, list, &box))
      continue;
    if (box.origin.y + box.size.height > 0 && box.origin.y < height)
      rows.emplace_back(box.origin.y, row);
  }
  std::sort(rows.begin(), rows.end());
  std::vector<GtkWidget*> sorted;
  for (const auto& [y, row] : rows) sorted.push_back(row);
  return sorted;
}

// A row's widgets served another before it: nothing of that may be left on them.
TEST_F(FolderRowsInPreview, ShowWhatTheViewSaysAfterScrollingToAndFro) {
  constexpr int kEntries = 1000;
  constexpr int kSizes = 7;
  std::filesystem::create_directories(folder_ / "large");
  for (int i = 0; i < kEntries; ++i)
    writeAll(folder_ / ("large/" + entryName(i)),
             std::string(static_cast<std::size_t>(i % kSizes), 'x'));
  Preview preview(folder_ / "large");
  ASSERT_TRUE(preview.finishes());
  GtkWidget* const list = listBelow(preview.presentation().widget());
  ASSERT_NE(list, nullptr);
  GtkAdjustment* const place = gtk_scrolled_window_get_vadjustment(preview.shown().scrolled);
  const auto body = only<ui::List>(preview.view()->body());
  const auto expectRows = [&](int first, int last) {
    const std::vector<GtkWidget*> rows = rowsOnScreen(list);
    ASSERT_GT(rows.size(), 10U);
    const std::string name = textsOf(rows[0]).at(0);
    auto index = static_cast<std::size_t>(std::stoi(name));
    EXPECT_TRUE(first < 0 || name == entryName(first));
    for (GtkWidget* const row : rows) {
      std::vector<ui::Text> texts;
      collect(body.rows->row(index++), texts);
      std::vector<std::string> expected;
      for (const ui::Text& text : texts) expected.emplace_back(text.text.view());
      EXPECT_EQ(textsOf(row), expected);
    }
    EXPECT_TRUE(last < 0 || index == static_cast<std::size_t>(last) + 1);
  };
  runFor(200);
  expectRows(0, -1);
  for (int round = 0; round < 2; ++round) {
    for (const double part : {0.3, 1.0, 0.6, 0.0}) {
      SCOPED_TRACE(part);
      gtk_adjustment_set_value(
          place, part * (gtk_adjustment_get_upper(place) - gtk_adjustment_get_page_size(place)));
      runFor(200);
      expectRows(part == 0.0 ? 0 : -1, part == 1.0 ? kEntries - 1 : -1);
    }
  }
}

TEST_F(FolderRowsInPreview, AreLetGoOfWithTheList) {
  bool isThere = false;
  {
    Preview preview(folder_ / "folder");
    ASSERT_TRUE(preview.finishes());
    GtkWidget* const list = listBelow(preview.presentation().widget());
    ASSERT_NE(list, nullptr);
    GtkSelectionModel* const model = gtk_list_view_get_model(GTK_LIST_VIEW(list));
    isThere = true;
    g_object_weak_ref(
        G_OBJECT(model), [](gpointer there, GObject*) { *static_cast<bool*>(there) = false; },
        &isThere);
  }
  EXPECT_TRUE(runUntil([&] { return !isThere; }));
}

}  // namespace
}  // namespace lumisk::test
