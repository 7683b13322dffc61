#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/file_descriptor.h"

namespace lumisk {

/// A folder of which some subfolders are still to be walked, with their names.
///
/// Its descriptor may be closed for a while: a tree can be deeper than there are descriptors.
class FolderLevel {
 public:
  explicit FolderLevel(FileDescriptor folder) : folder_(std::move(folder)) {}

  const FileDescriptor& folder() const { return folder_; }

  void addSubfolder(std::string_view name) { names_.append(name).push_back('\0'); }
  bool hasSubfolders() const { return next_ < names_.size(); }
  /// The next subfolder's name, which counts as walked from then on; good while this level is.
  const char* takeSubfolder();
  /// The name that was last taken.
  const char* takenSubfolder() const { return names_.c_str() + taken_; }
  /// Forgets the subfolders that were not taken.
  void dropSubfolders() { next_ = names_.size(); }

  /// Closes the descriptor, remembering which folder it was; leaves it open if that is not known.
  void rest();
  /// Goes on with `folder`, if that is the folder that rested here.
  bool resume(FileDescriptor folder);

  enum class Share { Half, HalfOrLast };
  /// Takes subfolders out of this level into one of its own for another walker: half of them, or
  /// with `HalfOrLast` the only one. Nothing when there are too few.
  std::optional<FolderLevel> split(Share share);

 private:
  FileDescriptor folder_;
  std::string names_;  // each with a NUL after it
  std::size_t next_ = 0;
  std::size_t taken_ = 0;
  dev_t device_ = 0;
  ino_t inode_ = 0;
};

}  // namespace lumisk
