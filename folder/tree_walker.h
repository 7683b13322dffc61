#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "folder/directory_reader.h"
#include "folder/folder_level.h"

namespace lumisk {

/// Sums what everything below one folder occupies on disk, a folder at a time, depth first.
///
/// It never names a path: each folder is opened from the one that holds it, so renames above do no
/// harm and no path is too long. Only the outermost folder and the deepest few are open; on the way
/// back the others are opened again as the "..", or if that is another folder by now, by their
/// names from the outermost one on. A folder that cannot be found again loses what was not yet
/// walked.
class TreeWalker {
 public:
  /// Starts with the subfolders that `root` names, and adds to `total`.
  void start(FolderLevel root);
  /// Starts with all that is in `folder`.
  void startWith(FileDescriptor folder);
  /// Walks one more folder. False when there is none left.
  bool step();
  /// Gives away about half of what is left, as near to the outermost folder as possible.
  std::optional<FolderLevel> split();

  std::int64_t total() const { return total_; }

 private:
  static constexpr std::size_t kOpenLevels = 16;

  void enter(FileDescriptor folder);
  void read(FolderLevel& level);
  void count(FolderLevel& level, const DirectoryReader::Entry& entry);
  void leave();
  FileDescriptor openDeepestByNames() const;

  std::vector<FolderLevel> levels_;  // the outermost first
  DirectoryReader reader_;
  std::int64_t total_ = 0;
};

/// `total + size`; ends the program, with a line that says why, when that is beyond 64 bits.
std::int64_t checkedSum(std::int64_t total, std::int64_t size);

}  // namespace lumisk
