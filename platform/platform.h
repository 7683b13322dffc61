#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/file_url.h"

// What a desktop must offer, and nothing more. The host implements it with its toolkit;
// platform/headless/ implements it with POSIX for the command and the tests; tests fake single
// interfaces. Whoever receives a Platform borrows it: it outlives every view and controller.

namespace lumisk {

using Task = std::function<void()>;

/// The thread that draws, as a queue of tasks run in the order they came.
class MainQueue {
 public:
  virtual ~MainQueue() = default;
  virtual bool isMainThread() const = 0;
  /// Queues `task` for a later turn, from any thread, the main one included.
  virtual void async(Task task) = 0;
  /// Runs `task` on the main thread and returns when it is done. Not from the main thread, nor from
  /// a thread that the main one waits for: that would be a deadlock.
  virtual void sync(const Task& task) = 0;
};

/// Threads for work that a person waits for but the main thread must not.
class BackgroundQueue {
 public:
  virtual ~BackgroundQueue() = default;
  virtual void async(Task task) = 0;
};

/// What the desktop's present appearance matches best.
enum class AppearanceMatch { Light, Dark, None };

class Appearance {
 public:
  virtual ~Appearance() = default;
  /// On the main thread only; see `isDarkMode`.
  virtual AppearanceMatch bestMatch() const = 0;
};

/// The user-visible texts of the program in the person's language.
class StringTable {
 public:
  virtual ~StringTable() = default;
  /// The text for `key`, or nothing when the table has none.
  virtual std::optional<std::string> text(std::string_view key) const = 0;
  /// The text for `key` in the plural form for `count`, with its number conversion still in it.
  virtual std::optional<std::string> pluralText(std::string_view key, std::int64_t count) const = 0;
};

/// A moment in time as a file system tells it: seconds and nanoseconds since 1970-01-01T00:00Z,
/// negative seconds before.
using FileTime = std::timespec;

/// Turns moments into text in the person's language, calendar and time zone.
class DateFormatter {
 public:
  virtual ~DateFormatter() = default;
  /// A medium date and a short time of day: "21 Nov 2026, 14:05".
  virtual std::string stringFromDate(FileTime date) const = 0;
};

/// Orders names as the person's language does, without regard to case, digits not read as numbers.
class Collation {
 public:
  virtual ~Collation() = default;
  /// A key for `name` (any bytes): two names compare as the bytes of their keys do. Equal keys
  /// mean names that differ at most in case.
  virtual std::string sortKey(std::string_view name) const = 0;
};

/// An icon, by the name under which an icon theme knows it ("folder", "text-x-generic").
struct Icon {
  std::string name;
  bool operator==(const Icon&) const = default;
};

class Icons {
 public:
  virtual ~Icons() = default;
  /// The icon of the item at `path`; a generic one when nothing is known of it. When the caller
  /// knows that the item is a directory it says so, which spares a look at the disk.
  virtual Icon iconForFile(std::string_view path, std::optional<bool> isDirectory) const = 0;
};

/// Whether a folder's entries are hidden, beyond a leading full stop.
class HiddenNames {
 public:
  virtual ~HiddenNames() = default;
  /// A test for the entries of one folder, which may read that folder's own list once.
  virtual std::function<bool(std::string_view name)> inFolder(
      std::string_view folderPath) const = 0;
};

/// Where the person's caches are kept; nothing when there is no such place.
class CachesDirectory {
 public:
  virtual ~CachesDirectory() = default;
  virtual std::optional<std::string> path() const = 0;
};

/// Standard output, one line at a time.
class StandardOutput {
 public:
  virtual ~StandardOutput() = default;
  /// Writes `line` and a line feed.
  virtual void writeLine(std::string_view line) = 0;
};

/// All of it. Each member is borrowed.
struct Platform {
  MainQueue& mainQueue;
  BackgroundQueue& backgroundQueue;
  const Appearance& appearance;
  const StringTable& strings;
  /// A new formatter with the settings of the moment.
  std::function<std::shared_ptr<const DateFormatter>()> makeDateFormatter;
  const Collation& collation;
  const Icons& icons;
  const HiddenNames& hiddenNames;
  const CachesDirectory& caches;
  StandardOutput& standardOutput;
};

/// Whether the person's desktop is dark at this moment: computed afresh at each call, from any
/// thread. Off the main thread the test runs synchronously on the main queue, so never call it on a
/// thread that the main one waits for. No match counts as light.
bool isDarkMode(MainQueue& mainQueue, const Appearance& appearance);

}  // namespace lumisk
