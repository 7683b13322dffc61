// The panel in another language: every word on it comes from that language's catalogue.

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>

#include <clocale>
#include <regex>
#include <set>

#include "desktop/texts.h"
#include "panel_on_screen.h"
#include "support/catalogue.h"

namespace lumisk::test {
namespace {

using desktop::Command;

class InGerman : public testing::Test {
 protected:
  InGerman() {
    Program::shared();  // finds the catalogues
    setenv("LANGUAGE", "de", 1);
    forgetTexts();
    const Catalogue catalogue(LUMISK_PO, "de");
    for (const std::string& key : catalogue.keys())
      for (const std::string& text : catalogue.textsOf(key)) add(text);
  }
  ~InGerman() override {
    unsetenv("LANGUAGE");
    forgetTexts();
  }
  /// The C library keeps what it found until the locale changes.
  static void forgetTexts() {
    std::setlocale(LC_MESSAGES, "C");
    std::setlocale(LC_MESSAGES, "C.UTF-8");
  }

  void add(std::string text) {
    const std::size_t slot = text.find('%');
    if (slot != std::string::npos) {
      // What comes before and after the slot.
      beginnings_.emplace(text.substr(0, slot), text.substr(text.find_first_of("sd", slot) + 1));
    } else {
      texts_.insert(std::move(text));
    }
  }
  bool isGerman(const std::string& text) const {
    if (texts_.contains(text)) return true;
    // A folder's count and size come before its date.
    for (const std::string_view joint : {" - ", ", "}) {
      const std::size_t at = text.find(joint);
      if (at != std::string::npos && !isFromSlot(text))
        return isGerman(text.substr(0, at)) && isGerman(text.substr(at + joint.size()));
    }
    return isSize(text) || isFromSlot(text);
  }
  /// "1.2 KB", in the person's formats.
  static bool isSize(const std::string& text) {
    return std::regex_match(text, std::regex("[0-9.,]+ [kKMG]?B(yte|ytes)?"));
  }
  /// A sentence of the catalogue with something of the item in it.
  bool isFromSlot(const std::string& text) const {
    for (const auto& [before, after] : beginnings_)
      if (before.size() + after.size() > 1 && text.starts_with(before) && text.ends_with(after))
        return true;
    return false;
  }
  /// All words in the window that are not the item's own are German. A folder's rows have the
  /// items' names, and sizes and dates in the person's formats.
  void expectGerman(PanelOnScreen& panel, const std::set<std::string>& itemsOwn) {
    int seen = 0;
    forEachShown(panel.root(), [&](GtkWidget* widget) {
      if (GTK_IS_WINDOW_CONTROLS(widget) ||
          gtk_widget_get_ancestor(widget, GTK_TYPE_WINDOW_CONTROLS) != nullptr)
        return;  // the toolkit's, in the toolkit's language
      if (gtk_widget_get_ancestor(widget, GTK_TYPE_LIST_VIEW) != nullptr) return;
      const char* const tooltip = gtk_widget_get_tooltip_text(widget);
      for (const std::string& text :
           {std::string(GTK_IS_LABEL(widget) ? gtk_label_get_text(GTK_LABEL(widget)) : ""),
            std::string(tooltip == nullptr ? "" : tooltip)}) {
        if (text.empty() || itemsOwn.contains(text)) continue;
        EXPECT_TRUE(isGerman(text)) << text;
        ++seen;
      }
    });
    EXPECT_GT(seen, 0);
  }

 private:
  std::set<std::string> texts_;
  std::set<std::pair<std::string, std::string>> beginnings_;
};

TEST_F(InGerman, TheCatalogueIsThere) { EXPECT_STREQ(desktop::tr("find.none"), "Keine Treffer"); }

TEST_F(InGerman, NoWordIsLeftInEnglish) {
  const ItemsToShow items;
  PanelOnScreen panel;
  for (const char* const name :
       {"guide.md", "data.json", "table.csv", "main.cpp", "folder", "empty"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(panel.open(items / name));
    panel->perform(Command::Find);
    runFor(300);
    expectGerman(panel, {name});
  }
  ASSERT_TRUE(panel.open(items / "guide.md"));
  ASSERT_TRUE(panel.followLink());
  expectGerman(panel, {"guide.md"});
}

TEST_F(InGerman, NeitherOnACalmPage) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "missing"));
  expectGerman(panel, {"missing"});
  panel->showUnavailable("mtp://phone/a.md", desktop::tr("request.not-local"));
  expectGerman(panel, {"mtp://phone/a.md"});
  ASSERT_TRUE(panel.open(items / "guide.md"));
  webkit_web_view_terminate_web_process(panel->webViews().latestView());
  ASSERT_TRUE(runUntil([&] { return panel->webViews().latestView() == nullptr; }));
  runFor(300);
  expectGerman(panel, {"guide.md"});
}

/// What the property says of each shown widget of these types, below `root`.
std::vector<std::string> textsOf(GtkWidget* root, const char* property,
                                 const std::set<std::string>& types) {
  std::vector<std::string> texts;
  forEachShown(root, [&](GtkWidget* widget) {
    if (!types.contains(G_OBJECT_TYPE_NAME(widget))) return;
    char* text = nullptr;
    g_object_get(widget, property, &text, nullptr);
    if (text != nullptr) texts.emplace_back(text);
    g_free(text);
  });
  return texts;
}

TEST_F(InGerman, NeitherInTheMenu) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "guide.md"));
  const auto isMenu = [](GtkWidget* w) { return GTK_IS_MENU_BUTTON(w) == TRUE; };
  auto* const menu = GTK_MENU_BUTTON(shownBelow(panel.root(), isMenu).at(0));
  gtk_menu_button_popup(menu);
  GtkWidget* const popover = GTK_WIDGET(gtk_menu_button_get_popover(menu));
  ASSERT_TRUE(runUntil([&] { return gtk_widget_get_mapped(popover) == TRUE; }));
  const std::vector<std::string> texts = textsOf(popover, "text", {"GtkModelButton"});
  EXPECT_EQ(texts.size(), 9U);
  for (const std::string& text : texts) EXPECT_TRUE(isGerman(text)) << text;
}

TEST_F(InGerman, NeitherInTheShortcutsWindow) {
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "guide.md"));
  panel->perform(Command::ShowShortcuts);
  GListModel* const windows = gtk_window_get_toplevels();
  desktop::GRef<GtkWidget> shortcuts;
  ASSERT_TRUE(runUntil([&] {
    for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
      auto each = desktop::GRef<GtkWidget>::adopt(GTK_WIDGET(g_list_model_get_item(windows, i)));
      if (GTK_IS_SHORTCUTS_WINDOW(each.get()) && gtk_widget_get_mapped(each.get()) == TRUE)
        shortcuts = each;
    }
    return static_cast<bool>(shortcuts);
  }));
  const std::vector<std::string> texts =
      textsOf(shortcuts.get(), "title", {"GtkShortcutsGroup", "GtkShortcutsShortcut"});
  EXPECT_GT(texts.size(), desktop::commandRows().size() / 2);
  for (const std::string& text : texts) EXPECT_TRUE(isGerman(text)) << text;
}

TEST_F(InGerman, NeitherInWhatAnyCommandIsCalled) {
  for (const desktop::CommandRow& row : desktop::commandRows())
    EXPECT_TRUE(isGerman(desktop::tr(row.title))) << row.action;
}

}  // namespace
}  // namespace lumisk::test
