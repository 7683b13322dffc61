#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/headless/headless_platform.h"
#include "platform/platform.h"

namespace lumisk::test {

/// The headless platform, with an appearance of the test's choice, background work that waits until
/// it is called, and everything that a request asks of it written down in order.
class RecordingPlatform {
 public:
  /// What was asked of the platform, in order: "appearance", "line …", "background".
  std::vector<std::string> log;
  AppearanceMatch appearance = AppearanceMatch::Light;

  const Platform& platform() const { return platform_; }
  HeadlessMainQueue& mainQueue() { return headless_.mainQueue(); }

  /// Runs the background work that waits, and then all that is queued on the main queue.
  void settle() {
    for (Task& task : std::exchange(backgroundTasks_, {})) task();
    mainQueue().runUntilIdle();
  }

 private:
  struct RecordingAppearance final : Appearance {
    explicit RecordingAppearance(RecordingPlatform& owner) : owner_(owner) {}
    AppearanceMatch bestMatch() const override {
      owner_.log.emplace_back("appearance");
      return owner_.appearance;
    }
    RecordingPlatform& owner_;
  };
  struct RecordingOutput final : StandardOutput {
    explicit RecordingOutput(RecordingPlatform& owner) : owner_(owner) {}
    void writeLine(std::string_view line) override {
      owner_.log.push_back("line " + std::string(line));
    }
    RecordingPlatform& owner_;
  };
  struct WaitingQueue final : BackgroundQueue {
    explicit WaitingQueue(RecordingPlatform& owner) : owner_(owner) {}
    void async(Task task) override {
      owner_.log.emplace_back("background");
      owner_.backgroundTasks_.push_back(std::move(task));
    }
    RecordingPlatform& owner_;
  };

  std::vector<Task> backgroundTasks_;
  HeadlessPlatform headless_{
      {.appearance = AppearanceMatch::Light, .localeName = "C", .catalogueFolder = "/nonexistent"}};
  RecordingAppearance recordingAppearance_{*this};
  RecordingOutput output_{*this};
  WaitingQueue backgroundQueue_{*this};
  Platform platform_{.mainQueue = headless_.platform().mainQueue,
                     .backgroundQueue = backgroundQueue_,
                     .appearance = recordingAppearance_,
                     .strings = headless_.platform().strings,
                     .makeDateFormatter = headless_.platform().makeDateFormatter,
                     .collation = headless_.platform().collation,
                     .icons = headless_.platform().icons,
                     .hiddenNames = headless_.platform().hiddenNames,
                     .caches = headless_.platform().caches,
                     .standardOutput = output_};
};

}  // namespace lumisk::test
