#pragma once

#include <unistd.h>

#include <utility>

namespace lumisk {

/// Owns a file descriptor, or none, and closes it.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// Takes over what `open` returned: a descriptor, or a negative number for none.
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~FileDescriptor() { reset(); }

  bool isOpen() const { return descriptor_ >= 0; }
  /// Negative when there is none.
  int get() const { return descriptor_; }
  /// Hands the descriptor over to the caller, who closes it.
  int release() { return std::exchange(descriptor_, -1); }
  void reset() {
    if (isOpen()) close(std::exchange(descriptor_, -1));
  }

 private:
  int descriptor_ = -1;
};

}  // namespace lumisk
