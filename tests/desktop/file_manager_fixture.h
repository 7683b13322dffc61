#pragma once

// The desktop's file manager, its keys and windows, and the previewer that the bus starts.

#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "accessible_items.h"
#include "previewer_calls.h"
#include "support/files.h"
#include "x_desktop.h"

namespace lumisk::test {

/// How Files calls itself, its window and its part of the accessibility bus.
inline constexpr const char* kFiles = "org.gnome.Nautilus";
inline constexpr int kWidestShadow = 60;  // around a window, and part of it for the display

/// The process of the previewer on this desktop, whatever it answers to; 0 for none.
inline pid_t previewerProcess() {
  for (const std::filesystem::directory_entry& entry :
       std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    std::error_code error;
    if (std::filesystem::read_symlink(entry.path() / "exe", error).filename() != "lumisk-previewer")
      continue;
    std::ifstream environment(entry.path() / "environ");
    const std::string text(std::istreambuf_iterator<char>(environment), {});
    if (text.find("HOME=" + std::string(std::getenv("HOME"))) != std::string::npos)
      return std::stoi(name);
  }
  return 0;
}

/// As after a long time with nothing shown, only at once.
inline void endService() {
  if (const pid_t service = serviceProcess(); service > 0) kill(service, SIGKILL);
  // The bus may not have heard of it yet.
  ASSERT_TRUE(eventually([] { return previewerProcess() == 0 && serviceProcess() == 0; }));
}

/// The previewer that the bus starts, read out by assistive technology, until this object goes.
class ServiceReadOut {
 public:
  ServiceReadOut() { startWith("atspi"); }
  ServiceReadOut(const ServiceReadOut&) = delete;
  ServiceReadOut& operator=(const ServiceReadOut&) = delete;
  ~ServiceReadOut() { startWith(std::getenv("GTK_A11Y")); }

 private:
  static void startWith(const char* accessibility) {
    EXPECT_EQ(
        call("UpdateActivationEnvironment", {"{'GTK_A11Y': '" + std::string(accessibility) + "'}"},
             "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
            .standardOutput,
        "()\n");
    endService();
  }
};

class FileManagerTest : public testing::Test {
 protected:
  void SetUp() override {
    writeAll(folder_ / "a.md", "# First\n");
    writeAll(folder_ / "b.json", "{\"second\":2}");
    writeAll(folder_ / "c.py", "third = 3\n");
    std::filesystem::create_directory(folder_ / "d folder");
    for (const char* name : {"e.csv", "f.csv", "g.csv", "h.csv"})
      writeAll(folder_ / name, "cell," + std::string(name) + "\n");
  }
  void TearDown() override {
    call("Close", {});
    EXPECT_TRUE(closes());
    quitFiles();
  }

  std::string uri(const std::string& name) const { return "file://" + (folder_ / name).string(); }

  WindowId preview() const { return desktop_.windowOf("lumisk-previewer"); }
  WindowId files() const { return desktop_.windowOf(kFiles); }
  bool shows(const std::string& name) const {
    return eventually([&] { return preview() != 0 && desktop_.titleOf(preview()) == name; });
  }
  bool closes() const {
    return eventually([&] { return preview() == 0; });
  }
  bool hasKeyboard(WindowId window) const {
    return eventually([&] { return desktop_.hasKeyboard(window); });
  }
  /// Whether the document that is shown holds this text: all is selected and copied in the preview.
  /// Asked again after longer and longer, for a page that has still to come comes the later the
  /// more keys it has to deal with.
  bool showsText(const std::string& text) const {
    using std::chrono::milliseconds;
    for (milliseconds pause(100); pause < milliseconds(30'000); pause *= 2) {
      if (!hasKeyboard(preview())) return false;
      pressKeys("ctrl+a");
      pressKeys("ctrl+c");
      if (desktop_.copiedText().find(text) != std::string::npos) return true;
      std::this_thread::sleep_for(pause);
    }
    return false;
  }

  void startFiles() {
    std::vector<std::string> words = {"/usr/bin/env", "GTK_A11Y=atspi",
                                      // Its turning wheel, drawn without a graphics card, leaves it
                                      // no time to read the folder on a busy machine.
                                      "GSK_RENDERER=cairo", "nautilus", "--new-window", uri("")};
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    ASSERT_EQ(posix_spawn(&files_, argv[0], nullptr, nullptr, argv.data(), environ), 0);
    ASSERT_TRUE(eventually([&] { return item("h.csv").has_value(); })) << "Files reads its folder";
  }
  std::optional<AccessibleItem> item(const std::string& name) const {
    return items_.itemNamed(kFiles, name);
  }
  /// What the preview is to follow. The focus is a matter of Files alone, which may put it on the
  /// item late, or at the next key, while another window has the keyboard.
  testing::AssertionResult selects(const std::string& name) const {
    std::optional<AccessibleItem> last;
    if (eventually([&] { return (last = item(name)) && last->isSelected; }))
      return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << (last ? name + " is not selected" : "Files shows no " + name);
  }
  /// Files may move its items between the look and the click, when it has just read its folder; a
  /// person clicks again. Not so soon that the two would count as a double click.
  void click(const std::string& name) const {
    constexpr int kAttempts = 6;
    for (int i = 0; i < kAttempts && (i == 0 || !hasSelectionAndFocus(name)); ++i) {
      ASSERT_NO_FATAL_FAILURE(clickOnce(name));
      for (int wait = 0; wait < 50 && !hasSelectionAndFocus(name); ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    ASSERT_TRUE(hasSelectionAndFocus(name)) << name << " is not selected, or has no focus";
    ASSERT_TRUE(hasKeyboard(files()));
  }
  bool hasSelectionAndFocus(const std::string& name) const {
    const auto shown = item(name);
    return shown && shown->isSelected && shown->hasFocus;
  }
  void clickOnce(const std::string& name) const {
    const auto shown = item(name);
    const auto inside = items_.windowOf(kFiles);
    ASSERT_TRUE(shown && inside);
    const ScreenPlace window = desktop_.placeOf(files());
    // The window on the display has its shadow around it.
    const int border = (window.width - inside->width) / 2;
    clickAt(window.x + border + shown->place.x + shown->place.width / 2,
            window.y + border + shown->place.y + shown->place.height / 2);
  }
  /// So that the preview covers no item.
  void putSideBySide() const {
    moveWindow(files(), 0, 0);
    const ScreenPlace left = desktop_.placeOf(files());
    moveWindow(preview(), left.x + left.width, 0);
    ASSERT_TRUE(eventually(
        [&] { return desktop_.placeOf(preview()).x >= left.x + left.width - kWidestShadow; }));
  }
  /// The item under this one, however many fit into a row.
  std::string below(const std::string& name) const {
    const ScreenPlace place = item(name)->place;
    for (const char* other : {"b.json", "c.py", "d folder", "e.csv", "f.csv", "g.csv", "h.csv"}) {
      const auto shown = item(other);
      if (shown && shown->place.x == place.x && shown->place.y > place.y) return other;
    }
    return "";
  }
  bool hasFilesEnded() {
    return files_ == 0 || (waitpid(files_, nullptr, WNOHANG) == files_ && (files_ = 0) == 0);
  }
  void quitFiles() {
    if (files_ == 0) return;
    kill(files_, SIGKILL);  // asked to end it lingers, and it holds nothing of worth
    EXPECT_TRUE(eventually([&] { return hasFilesEnded(); }));
  }

  TemporaryFolder folder_;
  XDesktop desktop_;
  AccessibleItems items_;
  pid_t files_ = 0;
};

}  // namespace lumisk::test
