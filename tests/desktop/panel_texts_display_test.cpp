// The panel in another language: every word on it comes from that language's catalogue.

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>

#include <clocale>
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
    // A folder's size comes before its date.
    constexpr std::string_view kJoint = " - ";
    const std::size_t joint = text.find(kJoint);
    if (joint != std::string::npos) return isGerman(text.substr(joint + kJoint.size()));
    for (const auto& [before, after] : beginnings_)
      if (before.size() + after.size() > 1 && text.starts_with(before) && text.ends_with(after))
        return true;
    return false;
  }
  /// All words in the window that are not the item's own are German.
  void expectGerman(PanelOnScreen& panel, const std::set<std::string>& itemsOwn) {
    int seen = 0;
    forEachShown(panel.root(), [&](GtkWidget* widget) {
      if (GTK_IS_WINDOW_CONTROLS(widget) ||
          gtk_widget_get_ancestor(widget, GTK_TYPE_WINDOW_CONTROLS) != nullptr)
        return;  // the toolkit's, in the toolkit's language
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
  for (const char* const name : {"guide.md", "data.json", "empty"}) {
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

TEST_F(InGerman, NeitherInTheMenuNorInTheShortcutsWindow) {
  for (const desktop::CommandRow& row : desktop::commandRows())
    EXPECT_TRUE(isGerman(desktop::tr(row.title))) << row.action;
}

}  // namespace
}  // namespace lumisk::test
