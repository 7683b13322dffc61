// What happens to an open panel from outside: its web process ends, the desktop's appearance
// changes.

#include <signal.h>

#include <string>

#include "panel_test.h"
#include "process_tree.h"

namespace lumisk::test {
namespace {

class PanelEventsTest : public PanelTest {
 protected:
  std::string heading() { return evaluate(page(), "document.querySelector('h1').textContent"); }
  bool isCrashShown() { return panel_->presentation() == nullptr && panel_->content() != nullptr; }
};

// --- the web process ---

/// Kills the web processes when the engine has taken up the page.
void killWhenCommitted(WebKitWebView*, WebKitLoadEvent event, gpointer killed) {
  if (event != WEBKIT_LOAD_COMMITTED) return;
  for (const std::string& process : webProcesses()) {
    kill(std::stoi(process), SIGKILL);
    ++*static_cast<int*>(killed);
  }
}

TEST_F(PanelEventsTest, AWebProcessKilledDuringALoadIsReported) {
  std::string text = "# Long\n\n";
  for (int i = 0; i < 1000; ++i) text += "Paragraph " + std::to_string(i) + "\n\n";
  writeAll(folder_ / "longer.md", text);
  open("data.csv");
  int killed = 0;
  finishedLoads_ = 0;
  panel_->show(FileURL::fromPath((folder_ / "longer.md").string()));
  {
    const desktop::SignalHandler loading(page(), "load-changed", G_CALLBACK(killWhenCommitted),
                                         &killed);
    ASSERT_TRUE(runUntil([&] { return isCrashShown(); }));
  }
  EXPECT_GE(killed, 1);
  EXPECT_EQ(finishedLoads_, 0) << "it was during the load";
  EXPECT_TRUE(panel_->isVisible());
  EXPECT_EQ(textOfTheContent(),
            "The Preview Stopped Working\n"
            "The process that shows pages has ended unexpectedly.\nReload\n");
  EXPECT_EQ(iconOfTheContent(), "dialog-warning-symbolic");
  EXPECT_TRUE(GTK_IS_BUTTON(focus())) << "the button that reloads";
  press("Return");
  ASSERT_TRUE(runUntil([&] { return finishedLoads_ == 1; }));
  EXPECT_EQ(heading(), "Long");
  open("long.md");
  EXPECT_EQ(heading(), "Tides");
}

TEST_F(PanelEventsTest, TheButtonOfTheCrashPageReloads) {
  open("long.md");
  webkit_web_view_terminate_web_process(page());
  ASSERT_TRUE(runUntil([&] { return isCrashShown() && GTK_IS_BUTTON(focus()); }));
  finishedLoads_ = 0;
  click(focus(), 10, 10);
  ASSERT_TRUE(runUntil([&] { return finishedLoads_ == 1; }));
  EXPECT_EQ(heading(), "Tides");
}

/// The panel is closed by the file manager in the moment in which the process ends.
void closePanel(WebKitWebView*, WebKitWebProcessTerminationReason, gpointer panel) {
  static_cast<desktop::Panel*>(panel)->close();
}

TEST_F(PanelEventsTest, NothingIsReportedInAClosedPanel) {
  open("long.md");
  WebKitWebView* const view = page();
  const desktop::SignalHandler ended(view, "web-process-terminated", G_CALLBACK(closePanel),
                                     panel_.get());
  webkit_web_view_terminate_web_process(view);
  ASSERT_TRUE(closes());
  runFor(200);
  EXPECT_EQ(panel_->content(), nullptr);
  open("long.md");
  EXPECT_EQ(heading(), "Tides");
}

// --- the appearance ---

class ScopedAppearance {
 public:
  ScopedAppearance() { set(ADW_COLOR_SCHEME_FORCE_LIGHT); }
  ScopedAppearance(const ScopedAppearance&) = delete;
  ScopedAppearance& operator=(const ScopedAppearance&) = delete;
  ~ScopedAppearance() { set(ADW_COLOR_SCHEME_DEFAULT); }
  static void set(AdwColorScheme scheme) {
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), scheme);
  }
};

TEST_F(PanelEventsTest, ThePanelFollowsTheAppearanceAtOnceAndThePageWhenPreparedAnew) {
  ScopedAppearance appearance;
  open("long.md");
  const auto windowColour = [&] {
    GdkRGBA colour{};
    gtk_style_context_lookup_color(gtk_widget_get_style_context(GTK_WIDGET(panel_->window())),
                                   "window_bg_color", &colour);
    return colour.red;
  };
  const auto pageColours = [&] {
    return evaluate(page(),
                    "getComputedStyle(document.body).backgroundColor + "
                    "getComputedStyle(document.body).color");
  };
  ASSERT_GT(windowColour(), 0.8);
  const std::string light = pageColours();
  appearance.set(ADW_COLOR_SCHEME_FORCE_DARK);
  EXPECT_TRUE(runUntil([&] { return windowColour() < 0.3; }));
  runFor(300);
  EXPECT_EQ(pageColours(), light);
  press("F5");
  ASSERT_TRUE(runUntil([&] { return finishedLoads_ == 2; }));
  EXPECT_NE(pageColours(), light);
  EXPECT_EQ(heading(), "Tides");
}

TEST_F(PanelEventsTest, WhatThePanelDrawsItselfFollowsToo) {
  ScopedAppearance appearance;
  std::filesystem::create_directories(folder_ / "folder/inner");
  struct Row {
    const char* label;
    const char* item;
    const char* mode;  ///< null for an item that has none
    std::function<GtkWidget*()> widget;
    double right;  ///< of a point where the widget is empty, from its edges
    double top;
  };
  const auto window = [&] { return GTK_WIDGET(panel_->window()); };
  const auto content = [&] { return panel_->content(); };
  const auto text = [&] {
    return GTK_WIDGET(desktop::findShownDocument(panel_->content()).scrolled);
  };
  const Row rows[] = {{"the toolbar", "long.md", nullptr, window, 200, 6},
                      {"beside the picker", "long.md", nullptr, content, 6, 6},
                      {"the ground of a source", "long.md", "source", text, 40, 300},
                      {"the header of a folder", "folder", nullptr, content, 20, 8},
                      {"the ground of a folder", "folder", nullptr, content, 20, 300},
                      {"the ground of an empty folder", "folder/inner", nullptr, content, 20, 300},
                      {"the ground of a calm page", "missing", nullptr, content, 20, 20}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    appearance.set(ADW_COLOR_SCHEME_FORCE_LIGHT);
    ASSERT_NO_FATAL_FAILURE(open(row.item));
    if (row.mode != nullptr) {
      ASSERT_TRUE(panel_->presentation()->selectMode(row.mode));
    }
    runFor(200);
    const auto lightness = [&] {
      GtkWidget* const widget = row.widget();
      const Point at = onScreen(widget, gtk_widget_get_width(widget) - row.right, row.top);
      const XDesktop::Lightness screen = desktop_.lightnessOfTheScreen();
      return int{screen.pixels.at(static_cast<std::size_t>(at.y * screen.width + at.x))};
    };
    // A picture takes as long as a frame, and frames come when nothing else is to do.
    const auto becomes = [&](const std::function<bool(int)>& isWanted) {
      return runUntil([&] {
        runFor(50);
        return isWanted(lightness());
      });
    };
    EXPECT_TRUE(becomes([](int light) { return light > 200; })) << lightness();
    appearance.set(ADW_COLOR_SCHEME_FORCE_DARK);
    EXPECT_TRUE(becomes([](int light) { return light < 80; })) << lightness();
    panel_->close();
  }
}

}  // namespace
}  // namespace lumisk::test
