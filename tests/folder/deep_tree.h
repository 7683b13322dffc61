#pragma once

#include <cstdint>
#include <filesystem>

namespace lumisk::test {

/// A folder in a folder in a folder…, far deeper than a path can say:
///
///     a/a/a/…         `levels` of them, and in each, beside the next one,
///     …/side/file     a folder with a file of one byte
class DeepTree {
 public:
  DeepTree(std::filesystem::path root, int levels);
  DeepTree(const DeepTree&) = delete;
  DeepTree& operator=(const DeepTree&) = delete;
  ~DeepTree();

  /// What all the files together occupy on disk.
  std::int64_t allocatedSize() const { return allocatedSize_; }

 private:
  std::filesystem::path root_;
  std::int64_t allocatedSize_ = 0;
};

}  // namespace lumisk::test
