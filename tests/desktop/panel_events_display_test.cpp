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
  EXPECT_TRUE(GTK_IS_BUTTON(focus())) << "the button that reloads";
  press("Return");
  ASSERT_TRUE(runUntil([&] { return finishedLoads_ == 1; }));
  EXPECT_EQ(heading(), "Long");
  open("long.md");
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

}  // namespace
}  // namespace lumisk::test
