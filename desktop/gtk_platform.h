#pragma once

#include <adwaita.h>

#include <memory>
#include <string>
#include <unordered_map>

#include "desktop/gref.h"
#include "platform/headless/headless_platform.h"
#include "platform/headless/hidden_names.h"
#include "platform/headless/string_table.h"
#include "platform/platform.h"

// What the previews need of the desktop, from the toolkit and ICU. What is the same on every
// desktop (message catalogues, hidden names, standard output) is taken from the C library's
// platform.

namespace lumisk::desktop {

/// GLib's default main context: the thread that makes the object must be the one that runs it.
class GlibMainQueue final : public MainQueue {
 public:
  bool isMainThread() const override;
  void async(Task task) override;
  void sync(const Task& task) override;

 private:
  GThread* mainThread_ = g_thread_self();
};

/// A few threads of GLib's.
///
/// Its end waits for nothing: work that has not begun is dropped, and what is under way goes on by
/// itself, which may be for as long as a file system does not answer. So what tasks borrow must
/// live as long as the program.
class GlibBackgroundQueue final : public BackgroundQueue {
 public:
  explicit GlibBackgroundQueue(int mostThreads = kMostThreads);
  GlibBackgroundQueue(const GlibBackgroundQueue&) = delete;
  GlibBackgroundQueue& operator=(const GlibBackgroundQueue&) = delete;
  ~GlibBackgroundQueue() override;
  void async(Task task) override;

 private:
  // The walk through a large folder goes on after its preview has gone; the next one is not to
  // wait.
  static constexpr int kMostThreads = 8;
  struct Waiting;
  static void runNext(gpointer turn, gpointer);

  std::shared_ptr<Waiting> waiting_;
  GThreadPool* pool_;
};

/// The colour scheme that the desktop's settings ask for.
class AdwaitaAppearance final : public Appearance {
 public:
  AppearanceMatch bestMatch() const override;
};

/// Icons as the file manager chooses them: by content type, with the theme's stand-ins. Main thread
/// only.
class GioIcons final : public Icons {
 public:
  Icon iconForFile(std::string_view path, std::optional<bool> isDirectory) const override;

 private:
  std::string iconOfName(const std::string& path) const;
  mutable std::unordered_map<std::string, std::string> iconOfType_;
};

/// The person's caches directory; a folder of this process where that one cannot be used, so that
/// a preview never fails for want of it.
class DesktopCachesDirectory final : public CachesDirectory {
 public:
  DesktopCachesDirectory() = default;
  DesktopCachesDirectory(const DesktopCachesDirectory&) = delete;
  DesktopCachesDirectory& operator=(const DesktopCachesDirectory&) = delete;
  ~DesktopCachesDirectory() override;
  std::optional<std::string> path() const override;

 private:
  mutable std::string ownFolder_;
};

std::shared_ptr<const DateFormatter> makeIcuDateFormatter();
std::unique_ptr<Collation> makeIcuCollation();

class GtkPlatform {
 public:
  /// `localeFolder` holds the message catalogues; empty: where the program was to be installed.
  explicit GtkPlatform(const std::string& localeFolder = {});
  GtkPlatform(const GtkPlatform&) = delete;
  GtkPlatform& operator=(const GtkPlatform&) = delete;
  ~GtkPlatform() = default;

  const Platform& platform() const { return platform_; }

 private:
  AdwaitaAppearance appearance_;
  GettextStringTable strings_;
  std::unique_ptr<Collation> collation_;
  GioIcons icons_;
  HeadlessHiddenNames hiddenNames_;
  DesktopCachesDirectory caches_;
  ProcessStandardOutput standardOutput_;
  GlibBackgroundQueue backgroundQueue_;
  Platform platform_;
};

}  // namespace lumisk::desktop
