// The panel on a Wayland compositor, by whose word a window is on its screen.

#include <gdk/wayland/gdkwayland.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "desktop/activation.h"
#include "desktop/panel_host.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

using desktop::PanelHost;

/// Whether the compositor shows the window, from when this is made.
class OnScreen {
 public:
  explicit OnScreen(GtkWindow* window) : window_(window) {
    const gulong whenRealized =
        g_signal_connect_swapped(window, "realize", G_CALLBACK(&OnScreen::watch), this);
    static_cast<void>(whenRealized);
    if (gtk_widget_get_realized(GTK_WIDGET(window)) == TRUE) watch(this);
  }
  OnScreen(const OnScreen&) = delete;
  OnScreen& operator=(const OnScreen&) = delete;
  ~OnScreen() { g_signal_handlers_disconnect_by_data(window_, this); }

  bool operator()() const { return isShown_; }
  /// Forgets what was: the next showing counts alone.
  void clear() { isShown_ = false; }

 private:
  static void watch(OnScreen* self) {
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(self->window_));
    self->entered_.emplace(surface, "enter-monitor", G_CALLBACK(&OnScreen::entered), self);
  }
  static void entered(GdkSurface*, GdkMonitor*, gpointer self) {
    static_cast<OnScreen*>(self)->isShown_ = true;
  }

  GtkWindow* window_;
  std::optional<desktop::SignalHandler> entered_;
  bool isShown_ = false;
};

class WaylandTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(GDK_IS_WAYLAND_DISPLAY(gdk_display_get_default()));
    writeAll(folder_ / "a.md", "# First\n");
    writeAll(folder_ / "b.json", "{\"second\":2}");
    host_.warmUp();
    GListModel* const windows = gtk_window_get_toplevels();
    ASSERT_EQ(g_list_model_get_n_items(windows), 1u);
    window_ = GTK_WINDOW(g_list_model_get_item(windows, 0));
    g_object_unref(window_);
    onScreen_ = std::make_unique<OnScreen>(window_);
  }
  void TearDown() override {
    host_.close();
    onScreen_.reset();
  }

  void request(const char* name, const std::string& parent = "") {
    const FileURL url = FileURL::fromPath((folder_ / name).string());
    host_.show({.uri = url.absoluteString(), .item = url, .parentHandle = parent});
  }
  bool shows(const char* name, const std::string& parent = "") {
    onScreen_->clear();
    request(name, parent);
    return runUntil([&] { return (*onScreen_)(); });
  }

  TemporaryFolder folder_;
  PanelHost host_{files_, nullptr};
  GtkWindow* window_ = nullptr;
  std::unique_ptr<OnScreen> onScreen_;

 private:
  static inline const desktop::EngineFiles files_{LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER, ""};
};

TEST_F(WaylandTest, WhatWasClosedComesBackEachTime) {
  for (int round = 0; round < 20; ++round) {
    for (const char* handle : {"", "wayland:abc", "wayland:", "x11:3a", "nonsense"}) {
      ASSERT_TRUE(shows("a.md", handle)) << round << " " << handle;
      host_.close();
    }
  }
}

TEST_F(WaylandTest, WhatWasClosedBeforeItWasThereComesBack) {
  for (unsigned round = 0; round < 60; ++round) {
    request("b.json", round % 2 == 0 ? "wayland:abc" : "");
    runFor(round);  // before its first frame and after it
    host_.close();
    if (round % 3 == 0) runFor(round % 20);
    ASSERT_TRUE(shows("a.md")) << round;
    host_.close();
  }
}

TEST_F(WaylandTest, BelongsToTheWindowOfAnotherProgram) {
  GtkWindow* const parent = GTK_WINDOW(gtk_window_new());
  gtk_window_present(parent);
  GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(parent));
  std::string handle;
  const auto exported = [](GdkToplevel*, const char* text, gpointer handed) {
    *static_cast<std::string*>(handed) = text;
  };
  ASSERT_TRUE(
      gdk_wayland_toplevel_export_handle(GDK_TOPLEVEL(surface), exported, &handle, nullptr));
  ASSERT_TRUE(runUntil([&] { return !handle.empty(); }));
  for (int round = 0; round < 3; ++round) {
    EXPECT_TRUE(shows("a.md", "wayland:" + handle));
    EXPECT_EQ(host_.parentHandle(), "wayland:" + handle);
    host_.close();
  }
  gdk_wayland_toplevel_unexport_handle(GDK_TOPLEVEL(surface));
  gtk_window_destroy(parent);
}

TEST_F(WaylandTest, ATokenIsReadyForTheCompositor) {
  GdkDisplay* const display = gdk_display_get_default();
  desktop::setActivationToken(window_, "a token");
  EXPECT_STREQ(gdk_wayland_display_get_startup_notification_id(display), "a token");
  desktop::setActivationToken(window_, "");
  desktop::setActivationToken(window_, std::string(100'000, 't'));
  EXPECT_STREQ(gdk_wayland_display_get_startup_notification_id(display), "a token");
  ASSERT_TRUE(shows("a.md"));
  EXPECT_EQ(gdk_wayland_display_get_startup_notification_id(display), nullptr) << "it was used";
}

}  // namespace
}  // namespace lumisk::test
