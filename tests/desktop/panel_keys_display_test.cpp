// Keys and the wheel, on keyboards of other languages too.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstdlib>

#include "desktop/commands.h"
#include "desktop/default_application.h"
#include "panel_test.h"
#include "support/process.h"

namespace lumisk::test {
namespace {

using desktop::SelectionStep;
using testing::HasSubstr;

// Keys by where they lie, named by what an English keyboard has there.
constexpr const char* kKeyF = "41";
constexpr const char* kKeyG = "42";
constexpr const char* kKeyO = "32";
constexpr const char* kKeyQ = "24";
constexpr const char* kKeyW = "25";
constexpr const char* kKey0 = "19";

class PanelKeysTest : public PanelTest {
 protected:
  ~PanelKeysTest() override {
    if (hasOtherLayouts_) setLayouts("us");
  }
  /// Gives the keyboard these layouts, of which the first is in use.
  void useLayouts(const std::string& layouts) {
    hasOtherLayouts_ = true;
    setLayouts(layouts);
  }
  static void setLayouts(const std::string& layouts) {
    const ProcessResult result = runProcess({"/usr/bin/env", "setxkbmap", "-layout", layouts});
    EXPECT_EQ(result.exitStatus, 0) << result.standardError;
    runFor(200);
  }
  double zoomLevel() { return webkit_web_view_get_zoom_level(page()); }

  bool hasOtherLayouts_ = false;
};

std::string withControl(const char* key) { return std::string("ctrl+") + key; }

// --- layouts ---

class LayoutWithoutLatinLettersTest : public PanelKeysTest,
                                      public testing::WithParamInterface<const char*> {};

TEST_P(LayoutWithoutLatinLettersTest, ControlAndALetterAreCommands) {
  useLayouts(std::string(GetParam()) + ",us");
  open("long.md");
  press(withControl(kKeyF));
  ASSERT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
  press(withControl(kKeyF));
  press("Escape");
  ASSERT_TRUE(runUntil([&] { return !panel_->findBar().isOpen(); }));
  press(withControl(kKeyW));
  EXPECT_TRUE(closes());
  EXPECT_FALSE(hasQuit_);
  closings_ = 0;
  open("long.md");
  press(withControl(kKeyQ));
  EXPECT_TRUE(closes());
  EXPECT_TRUE(hasQuit_);
}

INSTANTIATE_TEST_SUITE_P(Languages, LayoutWithoutLatinLettersTest,
                         testing::Values("ru", "gr", "il", "ara"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(PanelKeysTest, TheLettersOfASecondLayoutAreCommandsToo) {
  useLayouts("us,ru");
  open("long.md");
  press("ctrl+Cyrillic_a");
  EXPECT_TRUE(runUntil([&] { return panel_->findBar().hasFocus(); }));
}

TEST_F(PanelKeysTest, ShiftCountsOnLettersOfEveryLayout) {
  for (const char* layouts : {"us", "ru,us", "il,us"}) {
    SCOPED_TRACE(layouts);
    useLayouts(layouts);
    open("long.md");
    ASSERT_TRUE(panel_->presentation()->selectMode("source"));
    GtkTextBuffer* const buffer =
        gtk_text_view_get_buffer(desktop::findShownDocument(panel_->content()).text);
    const auto selectionStart = [&] {
      GtkTextIter start;
      gtk_text_buffer_get_selection_bounds(buffer, &start, nullptr);
      return gtk_text_iter_get_offset(&start);
    };
    panel_->findBar().open();
    gtk_editable_set_text(GTK_EDITABLE(focus()), "tides");
    EXPECT_TRUE(runUntil([&] { return panel_->findBar().countText() == "301 matches"; }));
    EXPECT_EQ(selectionStart(), 2);
    press(withControl(kKeyG));
    EXPECT_TRUE(runUntil([&] { return selectionStart() > 2; }));
    const int second = selectionStart();
    press("F3");
    EXPECT_TRUE(runUntil([&] { return selectionStart() > second; }));
    press(std::string("ctrl+shift+") + kKeyG);
    EXPECT_TRUE(runUntil([&] { return selectionStart() == second; }));
    press("shift+F3");
    EXPECT_TRUE(runUntil([&] { return selectionStart() == 2; }));
    panel_->close();
  }
}

TEST_F(PanelKeysTest, AFrenchKeyboardTypesDigitsWithShift) {
  useLayouts("fr");
  open("long.md");
  press("ctrl+plus");
  ASSERT_TRUE(runUntil([&] { return zoomLevel() > 1; }));
  press(std::string("ctrl+shift+") + kKey0);
  EXPECT_TRUE(runUntil([&] { return zoomLevel() == 1; }));
}

TEST_F(PanelKeysTest, ALatinLayoutIsReadAsItselfOnly) {
  useLayouts("fr,us");
  open("long.md");
  press(withControl(kKeyQ));  // its A
  press("Page_Down");
  EXPECT_TRUE(runUntil([&] { return scrollTop() > 100; }));
  EXPECT_TRUE(panel_->isVisible());
}

TEST_F(PanelKeysTest, TheNumberPadMeansTheSame) {
  open("long.md");
  std::vector<SelectionStep> steps;
  panel_->onSelectionStep = [&](SelectionStep step) { steps.push_back(step); };
  press("KP_Up KP_Down KP_Left KP_Right");
  EXPECT_TRUE(runUntil([&] { return steps.size() == 4; }));
  using enum SelectionStep;
  EXPECT_EQ(steps, (std::vector<SelectionStep>{Up, Down, Left, Right}));
  press("KP_Next");
  EXPECT_TRUE(runUntil([&] { return scrollTop() > 100; }));
  press("KP_Prior");
  EXPECT_TRUE(runUntil([&] { return scrollTop() == 0; }));
}

// --- what each key does ---

TEST_F(PanelKeysTest, PageUpTakesPageDownBack) {
  open("long.md");
  press("Page_Down Page_Down");
  ASSERT_TRUE(runUntil([&] { return scrollTop() > 1000; }));
  const double below = scrollTop();
  press("Page_Up");
  EXPECT_TRUE(runUntil([&] { return scrollTop() < below && scrollTop() > 100; }));
}

TEST_F(PanelKeysTest, ControlAndTheWheelZoom) {
  open("long.md");
  click(GTK_WIDGET(page()), 200, 200);  // the pointer is over the page
  const auto turn = [&](const char* button) {
    const ProcessResult result = runProcess(
        {"/usr/bin/env", "xdotool", "keydown", "ctrl", "click", button, "keyup", "ctrl"});
    EXPECT_EQ(result.exitStatus, 0) << result.standardError;
  };
  turn("4");
  EXPECT_TRUE(runUntil([&] { return zoomLevel() > 1; }));
  EXPECT_NEAR(zoomLevel(), 1.1, 1e-9) << "one notch is one step";
  turn("5");
  turn("5");
  EXPECT_TRUE(runUntil([&] { return zoomLevel() < 0.95; }));
  EXPECT_EQ(scrollTop(), 0) << "the page has stayed where it was";
  ASSERT_TRUE(panel_->presentation()->selectMode("source"));
  press("ctrl+0");
  const desktop::ShownDocument source = desktop::findShownDocument(panel_->content());
  click(GTK_WIDGET(source.text), 200, 100);
  const int usual = lineHeight();
  turn("4");
  turn("4");
  EXPECT_TRUE(runUntil([&] { return lineHeight() > usual; }));
  EXPECT_NEAR(panel_->zoom(), 1.21, 1e-9);
  turn("5");
  turn("5");
  EXPECT_TRUE(runUntil([&] { return lineHeight() == usual; }));
  EXPECT_EQ(gtk_adjustment_get_value(gtk_scrolled_window_get_vadjustment(source.scrolled)), 0)
      << "nor has the text moved";
}

class LongLineTest : public PanelKeysTest, public testing::WithParamInterface<const char*> {};

TEST_P(LongLineTest, ShiftAndTheArrowsMoveItSideways) {
  const std::string text(2000, 'x');
  writeAll(folder_ / "line.cpp", "int " + text + ";\n");
  writeAll(folder_ / "line.json", "{\"a\": \"" + text + "\"}");
  writeAll(folder_ / "line.jsonl", "{\"a\": 1}\n{\"a\": \"" + text + "\"}\n");
  writeAll(folder_ / "line.csv", "a,b\n" + text + ",2\n");
  writeAll(folder_ / "line.md", "# Title\n\n```\n" + text + "\n```\n\nEnd.\n");
  open(GetParam());
  const auto farthest = [&] {
    return std::stod(
        evaluate(page(),
                 "Math.max(scrollX, ...Array.from(document.querySelectorAll('*'), e => "
                 "e.scrollLeft))"));
  };
  ASSERT_EQ(farthest(), 0);
  press("shift+Right shift+Right");
  EXPECT_TRUE(runUntil([&] { return farthest() == 80; })) << farthest();
  press("shift+Left");
  EXPECT_TRUE(runUntil([&] { return farthest() == 40; })) << farthest();
}

INSTANTIATE_TEST_SUITE_P(Kinds, LongLineTest,
                         testing::Values("line.cpp", "line.json", "line.jsonl", "line.csv",
                                         "line.md"),
                         [](const auto& row) { return std::string(row.param).substr(5); });

/// The desktop's other windows while `keys` are pressed; each is closed when it has been seen.
std::vector<std::string> windowsThatCome(const std::string& keys, GtkWindow* panel) {
  std::vector<std::string> types;
  desktop::Deferred look;
  std::function<void()> again = [&] {
    GListModel* const windows = gtk_window_get_toplevels();
    for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
      const auto window =
          desktop::GRef<GtkWindow>::adopt(GTK_WINDOW(g_list_model_get_item(windows, i)));
      if (gtk_window_get_transient_for(window.get()) != panel) continue;
      if (gtk_widget_get_mapped(GTK_WIDGET(window.get())) == FALSE) continue;
      types.emplace_back(G_OBJECT_TYPE_NAME(window.get()));
      // The printing code counts on being told before its window goes.
      if (GTK_IS_DIALOG(window.get()))
        return gtk_dialog_response(GTK_DIALOG(window.get()), GTK_RESPONSE_CANCEL);
      return gtk_window_close(window.get());
    }
    look.after(50, again);
  };
  again();
  press(keys);
  runUntil([&] { return !types.empty(); });
  runFor(200);
  return types;
}

TEST_F(PanelKeysTest, ControlPAsksHowToPrint) {
  // The engine's own helpers leave this file behind where they run as root.
  if (std::filesystem::exists("/.flatpak-info"))
    GTEST_SKIP() << "the engine takes the machine for a Flatpak and asks a portal to print";
  open("long.md");
  EXPECT_EQ(windowsThatCome("ctrl+p", panel_->window()),
            std::vector<std::string>{"GtkPrintUnixDialog"});
  EXPECT_TRUE(panel_->isVisible());
}

TEST_F(PanelKeysTest, ControlAndTheQuestionMarkListTheKeys) {
  open("long.md");
  EXPECT_EQ(windowsThatCome("ctrl+question", panel_->window()),
            std::vector<std::string>{"GtkShortcutsWindow"});
  EXPECT_TRUE(panel_->isVisible());
}

TEST_F(PanelKeysTest, TheListOfKeysGoesWithThePanel) {
  open("long.md");
  press("ctrl+question");
  ASSERT_TRUE(runUntil([&] { return desktop_.windows().size() == 2; }));
  panel_->close();  // as the file manager does
  EXPECT_TRUE(runUntil([&] { return desktop_.windows().empty(); }));
  EXPECT_EQ(g_list_model_get_n_items(gtk_window_get_toplevels()), 1U) << "the panel's own";
}

/// An application that is the person's choice for Markdown, and writes down what it is opened with.
class DefaultApplication {
 public:
  explicit DefaultApplication(const TemporaryFolder& folder) : opened_(folder / "opened") {
    const std::filesystem::path program = folder / "application";
    writeAll(program, "#!/bin/sh\necho \"$1\" >" + opened_.string() + ".new\nmv " +
                          opened_.string() + ".new " + opened_.string() + "\n");
    ::chmod(program.c_str(), 0700);
    const std::filesystem::path entries =
        std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "applications";
    entry_ = entries / "lumisk-test.desktop";
    list_ = std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "mimeapps.list";
    std::filesystem::create_directories(entries);
    writeAll(entry_,
             "[Desktop Entry]\nType=Application\nName=Tester\nMimeType=text/markdown;\n"
             "Exec=" +
                 program.string() + " %f\n");
    writeAll(list_, "[Default Applications]\ntext/markdown=lumisk-test.desktop\n");
    EXPECT_TRUE(runUntil([] {
      const auto application = desktop::defaultApplication("text/markdown");
      return application && g_app_info_get_name(application.get()) == std::string("Tester");
    }));
  }
  DefaultApplication(const DefaultApplication&) = delete;
  DefaultApplication& operator=(const DefaultApplication&) = delete;
  ~DefaultApplication() {
    std::filesystem::remove(entry_);
    std::filesystem::remove(list_);
  }

  /// What it was opened with since it was asked last, once it has started.
  std::string opened() const {
    runUntil([this] { return std::filesystem::exists(opened_); });
    if (!std::filesystem::exists(opened_)) return "nothing";
    const std::string text = readAll(opened_);
    std::filesystem::remove(opened_);
    return text;
  }

 private:
  std::filesystem::path opened_;
  std::filesystem::path entry_;
  std::filesystem::path list_;
};

TEST_F(PanelKeysTest, ReturnAndControlOOpenTheDefaultApplication) {
  const DefaultApplication application(folder_);
  for (const std::string& key : {std::string("Return"), std::string("KP_Enter"),
                                 std::string("ctrl+o"), withControl(kKeyO)}) {
    SCOPED_TRACE(key);
    closings_ = 0;
    open("long.md");
    press(key);
    EXPECT_EQ(application.opened(), (folder_ / "long.md").string() + "\n");
    EXPECT_TRUE(closes());
  }
}

}  // namespace
}  // namespace lumisk::test
