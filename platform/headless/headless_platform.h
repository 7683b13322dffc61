#pragma once

#include <string>

#include "platform/headless/background_queue.h"
#include "platform/headless/caches_directory.h"
#include "platform/headless/collation.h"
#include "platform/headless/hidden_names.h"
#include "platform/headless/icons.h"
#include "platform/headless/main_queue.h"
#include "platform/headless/string_table.h"
#include "platform/platform.h"

namespace lumisk {

/// The appearance that a setting states.
class FixedAppearance final : public Appearance {
 public:
  explicit FixedAppearance(AppearanceMatch match) : match_(match) {}
  AppearanceMatch bestMatch() const override { return match_; }

 private:
  AppearanceMatch match_;
};

/// The process's standard output, flushed after each line.
class ProcessStandardOutput final : public StandardOutput {
 public:
  void writeLine(std::string_view line) override;
};

struct HeadlessOptions {
  AppearanceMatch appearance = AppearanceMatch::Light;
  /// The locale's name; empty for the person's own.
  std::string localeName;
  /// Where message catalogues are; empty for the installed ones.
  std::string catalogueFolder;
};

/// A whole desktop with the C library alone. The thread that makes it is the main thread.
class HeadlessPlatform {
 public:
  explicit HeadlessPlatform(const HeadlessOptions& options = {});
  HeadlessPlatform(const HeadlessPlatform&) = delete;
  HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;
  ~HeadlessPlatform() = default;

  const Platform& platform() const { return platform_; }
  HeadlessMainQueue& mainQueue() { return mainQueue_; }

  /// Runs the main queue until nothing is queued or under way anywhere.
  void runUntilSettled() { lumisk::runUntilSettled(mainQueue_, backgroundQueue_); }

 private:
  HeadlessMainQueue mainQueue_;
  HeadlessBackgroundQueue backgroundQueue_;  // after the main queue, which it uses to its end
  FixedAppearance appearance_;
  GettextStringTable strings_;
  HeadlessCollation collation_;
  HeadlessIcons icons_;
  HeadlessHiddenNames hiddenNames_;
  XdgCachesDirectory caches_;
  ProcessStandardOutput standardOutput_;
  Platform platform_;
};

}  // namespace lumisk
