// Opening the item with its application, which is never this program.

#include <gtest/gtest.h>

#include "desktop/default_application.h"
#include "panel_on_screen.h"

namespace lumisk::test {
namespace {

using desktop::Command;

/// Applications and choices of a person who has only what a test gives them.
class OpenWith : public testing::Test {
 protected:
  OpenWith() {
    std::filesystem::create_directories(applications_);
    std::filesystem::create_directories(choices_.parent_path());
  }
  ~OpenWith() override {
    std::filesystem::remove_all(applications_);
    std::filesystem::remove(choices_);
    // The library takes note of it while the main loop runs.
    runFor(100);
  }

  void install(const std::string& id, const std::string& name, const std::string& more = "") {
    writeAll(applications_ / (id + ".desktop"),
             "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=/bin/true %U\n" + more);
  }
  void choose(const std::string& type, const std::string& first, const std::string& others = "") {
    writeAll(choices_, "[Default Applications]\n" + type + "=" + first +
                           ";\n[Added Associations]\n" + type + "=" + first + ";" + others + "\n");
  }
  static std::string nameFor(const char* type) {
    const auto application = desktop::defaultApplication(type);
    return application ? g_app_info_get_name(application.get()) : "";
  }

  std::filesystem::path applications_ =
      std::filesystem::path(g_get_user_data_dir()) / "applications";
  std::filesystem::path choices_ = std::filesystem::path(g_get_user_config_dir()) / "mimeapps.list";
};

TEST_F(OpenWith, WhereWeAreTheDefaultTheNextOneIs) {
  for (const char* const own : {"z-org.lumisk.OpenWith", "org.lumisk.Previewer"}) {
    install(own, "Lumisk");
    install("editor", "An Editor");
    choose("text/x-lumisk-test", std::string(own) + ".desktop", "editor.desktop;");
    EXPECT_TRUE(runUntil([] { return nameFor("text/x-lumisk-test") == "An Editor"; })) << own;
  }
}

TEST_F(OpenWith, WhereThereIsNoOtherThereIsNone) {
  install("z-org.lumisk.OpenWith", "Lumisk");
  choose("application/x-lumisk-test", "z-org.lumisk.OpenWith.desktop");
  // Once the library knows the entry.
  ASSERT_TRUE(runUntil([] {
    return static_cast<bool>(desktop::GRef<GAppInfo>::adopt(
        g_app_info_get_default_for_type("application/x-lumisk-test", FALSE)));
  }));
  EXPECT_EQ(nameFor("application/x-lumisk-test"), "");
  EXPECT_EQ(nameFor(""), "");
}

TEST_F(OpenWith, AnApplicationThatCannotBeStartedIsSaidToBe) {
  // Its folder to start in is missing, which is noticed at once.
  install("broken", "Broken & <Co>", "Path=/nowhere/at/all\n");
  choose("text/csv", "broken.desktop");
  ASSERT_TRUE(runUntil([] { return nameFor("text/csv") == "Broken & <Co>"; }));
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "table.csv"));
  panel->perform(Command::OpenWithDefault);
  EXPECT_TRUE(panel->isVisible()) << "the preview stays";
  EXPECT_TRUE(runUntil([&] {
    const auto labels = shownBelow(panel.root(), [](GtkWidget* widget) {
      return GTK_IS_LABEL(widget) && std::string(gtk_label_get_text(GTK_LABEL(widget))) ==
                                         "Broken & <Co> could not be started.";
    });
    return labels.size() == 1;
  }));
}

TEST_F(OpenWith, OneThatStartsTakesThePanelsPlace) {
  install("viewer", "Viewer");
  choose("text/csv", "viewer.desktop");
  ASSERT_TRUE(runUntil([] { return nameFor("text/csv") == "Viewer"; }));
  const ItemsToShow items;
  PanelOnScreen panel;
  ASSERT_TRUE(panel.open(items / "table.csv"));
  panel->perform(Command::OpenWithDefault);
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(OpenWith, ItsButtonNamesTheApplicationAndOpensTheItem) {
  const ItemsToShow items;
  writeAll(items / "unknown", std::string("\x01\x02\xff\xfe\0", 5));
  const std::filesystem::path opened = items / "opened";
  writeAll(
      applications_ / "viewer.desktop",
      "[Desktop Entry]\nType=Application\nName=Viewer\nExec=/bin/cp %f " + opened.string() + "\n");
  choose("text/csv", "viewer.desktop");
  ASSERT_TRUE(runUntil([] { return nameFor("text/csv") == "Viewer"; }));
  PanelOnScreen panel;
  const auto buttons = [&] {
    return shownBelow(panel.root(), [](GtkWidget* widget) {
      GtkWidget* const label =
          GTK_IS_BUTTON(widget) ? gtk_button_get_child(GTK_BUTTON(widget)) : nullptr;
      return label != nullptr && GTK_IS_LABEL(label) &&
             std::string(gtk_label_get_text(GTK_LABEL(label))).starts_with("Open With");
    });
  };
  for (const char* const name : {"missing", "unknown"}) {
    ASSERT_TRUE(panel.open(items / name));
    EXPECT_TRUE(buttons().empty()) << name << " has no application";
  }
  ASSERT_TRUE(panel.open(items / "table.csv"));
  ASSERT_EQ(buttons().size(), 1U);
  GtkWidget* const button = buttons().front();
  EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(gtk_button_get_child(GTK_BUTTON(button)))),
               "Open With Viewer");
  g_signal_emit_by_name(button, "clicked");
  EXPECT_TRUE(runUntil([&] {
    return std::filesystem::exists(opened) && readAll(opened) == readAll(items / "table.csv");
  }));
  EXPECT_FALSE(panel->isVisible());
}

}  // namespace
}  // namespace lumisk::test
