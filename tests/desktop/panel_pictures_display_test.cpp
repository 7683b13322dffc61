// Pictures of the whole panel, kept for people to look at: light and dark, from left to right and
// from right to left, with each of its bars and calm pages.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "desktop/picture.h"
#include "desktop/texts.h"
#include "held_queue.h"
#include "panel_on_screen.h"
#include "picture_reading.h"

namespace lumisk::test {
namespace {

using desktop::Command;

struct Look {
  const char* name;
  bool isDark;
  GtkTextDirection direction;
};
constexpr Look kLooks[] = {{"light", false, GTK_TEXT_DIR_LTR},
                           {"dark", true, GTK_TEXT_DIR_LTR},
                           {"mirrored", false, GTK_TEXT_DIR_RTL}};

class PanelPictures : public testing::TestWithParam<Look> {
 protected:
  PanelPictures() {
    std::filesystem::create_directories(LUMISK_ARTEFACTS);
    gtk_widget_set_default_direction(GetParam().direction);
    adw_style_manager_set_color_scheme(
        adw_style_manager_get_default(),
        GetParam().isDark ? ADW_COLOR_SCHEME_FORCE_DARK : ADW_COLOR_SCHEME_FORCE_LIGHT);
  }
  ~PanelPictures() override {
    gtk_widget_set_default_direction(GTK_TEXT_DIR_LTR);
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(),
                                       ADW_COLOR_SCHEME_FORCE_LIGHT);
  }

  void expectPicture(GtkWidget* widget, const std::string& name) {
    const std::string file =
        std::string(LUMISK_ARTEFACTS) + "/panel-" + name + "-" + GetParam().name + ".png";
    desktop::GRef<GdkTexture> picture;
    ASSERT_TRUE(runUntil([&] { return static_cast<bool>(picture = desktop::pictureOf(widget)); }));
    EXPECT_TRUE(desktop::writePicture(picture.get(), file)) << file;
    EXPECT_FALSE(desktop::isBlank(picture.get())) << file;
    if (GetParam().isDark) {
      EXPECT_LT(meanLightness(picture.get()), 100) << file;
    } else {
      EXPECT_GT(meanLightness(picture.get()), 180) << file;
    }
  }
  /// Below the bars, which are never blank: what the panel shows of the item.
  void expectContent() {
    const desktop::ShownDocument shown = desktop::findShownDocument(panel_->content());
    GtkWidget* const document = shown.page != nullptr ? GTK_WIDGET(shown.page) : panel_->content();
    const auto picture = desktop::pictureOf(document);
    ASSERT_TRUE(picture);
    EXPECT_FALSE(desktop::isBlank(picture.get()));
  }
  void expectPicture(const std::string& name) { expectPicture(panel_.root(), name); }

  ItemsToShow items_;
  PanelOnScreen panel_;
};

TEST_P(PanelPictures, OfEachKind) {
  for (const char* const name : ItemsToShow::kNames) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(panel_.open(items_ / name));
    expectPicture(name);
    expectContent();
  }
}

TEST_P(PanelPictures, OfTheSourceAndTheFindBar) {
  ASSERT_TRUE(panel_.open(items_ / "guide.md"));
  panel_->perform(Command::Find);
  runFor(400);
  const auto entries =
      shownBelow(panel_.root(), [](GtkWidget* w) { return GTK_IS_SEARCH_ENTRY(w) == TRUE; });
  ASSERT_EQ(entries.size(), 1U);
  gtk_editable_set_text(GTK_EDITABLE(entries[0]), "next");
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "1 match"; }));
  runFor(300);
  expectPicture("find");
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "2 matches"; }));
  runFor(300);
  expectPicture("source");
}

TEST_P(PanelPictures, OfTheWayBack) {
  ASSERT_TRUE(panel_.open(items_ / "guide.md"));
  ASSERT_TRUE(panel_.followLink());
  expectPicture("back");
}

TEST_P(PanelPictures, OfTheCalmPages) {
  panel_->showUnavailable("mtp://phone/notes/guide.md", desktop::tr("request.not-local"));
  runFor(300);
  expectPicture("not-local");
  const std::filesystem::path pipe = items_ / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  ASSERT_TRUE(panel_.open(pipe));
  expectPicture("pipe");
  ASSERT_TRUE(panel_.open(items_ / "guide.md"));
  webkit_web_view_terminate_web_process(panel_->webViews().latestView());
  ASSERT_TRUE(runUntil([&] { return panel_->webViews().latestView() == nullptr; }));
  runFor(300);
  expectPicture("crash");
}

TEST_P(PanelPictures, OfTheWait) {
  writeAll(items_ / "large.txt", std::string(std::size_t{2} * 1024 * 1024, 'x'));
  HeldQueue preparing;
  PanelOnScreen panel(preparing);
  panel->show(FileURL::fromPath((items_ / "large.txt").string()));
  const auto wheels = [&] {
    return shownBelow(panel.root(), [](GtkWidget* w) { return GTK_IS_SPINNER(w) == TRUE; });
  };
  ASSERT_TRUE(runUntil([&] { return wheels().size() == 1; }));
  runFor(300);
  const auto wheel = desktop::pictureOf(wheels().front());
  ASSERT_TRUE(wheel);
  EXPECT_FALSE(desktop::isBlank(wheel.get()));
  expectPicture(panel.root(), "wait");
  panel->perform(Command::Find);
  runFor(400);
  expectPicture(panel.root(), "wait-find");
}

TEST_P(PanelPictures, OfTheShortcutsWindow) {
  ASSERT_TRUE(panel_.open(items_ / "main.cpp"));
  panel_->perform(Command::ShowShortcuts);
  runFor(600);
  GList* const windows = gtk_window_list_toplevels();
  int count = 0;
  for (GList* at = windows; at != nullptr; at = at->next) {
    if (!GTK_IS_SHORTCUTS_WINDOW(at->data)) continue;
    expectPicture(GTK_WIDGET(at->data), "shortcuts");
    ++count;
  }
  g_list_free(windows);
  EXPECT_EQ(count, 1);
}

INSTANTIATE_TEST_SUITE_P(InEachLook, PanelPictures, testing::ValuesIn(kLooks),
                         [](const auto& look) { return std::string(look.param.name); });

}  // namespace
}  // namespace lumisk::test
