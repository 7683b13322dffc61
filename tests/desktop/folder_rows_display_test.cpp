// Folders on screen: rows are made for what is seen of them, and let go of with the list.

#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "panel_on_screen.h"
#include "preview_on_screen.h"

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
