#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "held_queue.h"
#include "panel_test.h"

namespace lumisk::test {

namespace fs = std::filesystem;

inline std::string repeated(const std::string& line, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) text += line;
  return text;
}

/// Files that are made ready on another thread, when the test has it do so.
class LargeItem : public PanelTest {
 protected:
  LargeItem() {
    constexpr std::size_t kBytes = std::size_t{2} * 1024 * 1024;
    writeAll(folder_ / "large.txt",
             "beginning of it\n" + repeated("a line of a long log\n", kBytes));
    writeAll(folder_ / "large.md", "# Large\n\n" + repeated("word ", kBytes));
    writeAll(folder_ / "large.json", "[" + repeated("{\"tide\": [1, 2]},", kBytes) + "0]");
    writeAll(folder_ / "large.bin", repeated("\xFF\xFE", kBytes));
    writeAll(folder_ / "small.txt", "small\n");
    makePanel(queue_);
  }
  ~LargeItem() override { panel_.reset(); }

  void makePanel(BackgroundQueue& queue) {
    panel_.reset();
    panel_ = std::make_unique<desktop::Panel>(Program::shared().platform.platform(),
                                              Program::shared().liveViews, queue);
    panel_->onPageFinished = [this] { ++finishedLoads_; };
    panel_->onClosed = [this] { ++closings_; };
  }

  void request(const char* name) { panel_->show(FileURL::fromPath((folder_ / name).string())); }
  bool isOnScreen() const { return gtk_widget_get_mapped(GTK_WIDGET(panel_->window())) == TRUE; }
  std::vector<GtkWidget*> wheels() const {
    return shownBelow(GTK_WIDGET(panel_->window()),
                      [](GtkWidget* each) { return GTK_IS_SPINNER(each) == TRUE; });
  }
  /// Also those that are about to come.
  std::vector<GtkWidget*> allWheels() const {
    std::vector<GtkWidget*> found;
    const std::function<void(GtkWidget*)> look = [&](GtkWidget* widget) {
      if (GTK_IS_SPINNER(widget)) found.push_back(widget);
      for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
           child = gtk_widget_get_next_sibling(child))
        look(child);
    };
    look(GTK_WIDGET(panel_->window()));
    return found;
  }
  bool isWaiting() const { return panel_->isMakingReady() && wheels().size() == 1; }
  bool isShown() {
    return runUntil([&] { return panel_->presentation() != nullptr; });
  }
  bool isLoaded() {
    return runUntil([&] { return finishedLoads_ > 0; });
  }
  static fs::path pages() {
    return fs::path(*Program::shared().platform.platform().caches.path()) / "LumiskHTML";
  }
  static std::string pageFile() { return readAll(pages() / "preview.html"); }
  /// What lies beside the page file and is to take its place.
  static std::vector<fs::path> writtenPages() {
    std::vector<fs::path> found;
    std::error_code missing;
    for (const auto& entry : fs::directory_iterator(pages(), missing))
      if (entry.path().filename() != "preview.html") found.push_back(entry.path());
    return found;
  }

  HeldQueue queue_;
};

}  // namespace lumisk::test
