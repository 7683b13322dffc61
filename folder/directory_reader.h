#pragma once

#include <cstddef>
#include <memory>

#include "platform/file_descriptor.h"

namespace lumisk {

/// Opens the folder at `path`, links to it followed. None if there is no folder that can be read.
FileDescriptor openFolder(const char* path);
/// Opens the folder's item `name` if it is a folder itself; a symbolic link is none.
FileDescriptor openSubfolder(const FileDescriptor& folder, const char* name);
/// Opens the folder that holds `folder` at this moment.
FileDescriptor openParent(const FileDescriptor& folder);

/// Reads the entries of folders, one folder after the other, in the order of the file system and
/// without "." and "..". It calls the system directly, because a `DIR` costs an allocation and a
/// look at the folder each, which is much for a tree of small folders.
class DirectoryReader {
 public:
  DirectoryReader() : buffer_(std::make_unique<std::byte[]>(kBufferSize)) {}

  enum class Type { Folder, Other, Unknown };  // Unknown: the file system does not say

  struct Entry {
    const char* name;  // good until the next call
    Type type;
  };

  /// Starts with `folder`, which must stay open until `next` is done with it.
  void start(const FileDescriptor& folder);
  /// Moves to the next entry. False at the end, and when the folder cannot be read any further.
  bool next(Entry& entry);
  /// Whether reading ended before the end.
  bool hasFailed() const { return hasFailed_; }

 private:
  bool refill();

  static constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

  std::unique_ptr<std::byte[]> buffer_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  int descriptor_ = -1;
  bool hasFailed_ = false;
};

}  // namespace lumisk
