#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <variant>

#include "core/error_record.h"

namespace lumisk {

/// The bytes of a file, in memory of its own.
class FileContents {
 public:
  FileContents() = default;
  explicit FileContents(std::string_view bytes);
  FileContents(FileContents&& other) noexcept;
  FileContents& operator=(FileContents&& other) noexcept;
  ~FileContents();

  std::string_view bytes() const { return {memory_, size_}; }

 private:
  friend class FileReader;
  char* memory_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

/// Reads the whole file at `path`. The error is in the domain "POSIX" and carries the errno and the
/// system's text. Only regular files are read: a pipe, socket or device is refused (ENOTSUP) before
/// it can block, a directory with EISDIR. Memory is the file's size and at most 2 MiB more.
std::variant<FileContents, ErrorRecord> readFile(std::string_view path);

}  // namespace lumisk
