#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

#include "core/error_record.h"

namespace lumisk {

/// The bytes of a file in memory of its own, which goes when this goes.
class FileContents {
 public:
  FileContents() = default;
  FileContents(const FileContents&) = delete;
  FileContents& operator=(const FileContents&) = delete;
  FileContents(FileContents&& other) noexcept;
  FileContents& operator=(FileContents&& other) noexcept;
  ~FileContents();

  std::string_view bytes() const { return {memory_, size_}; }

 private:
  friend class FileReading;
  char* memory_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;  // 0 when nothing is held
};

/// Whether a file that begins with these bytes is to be read on.
using ReadingTest = std::function<bool(std::string_view soFar)>;

/// Reads the whole file at `path`, or less of it: `isWorthReadingOn` is asked after the first 64 KB
/// and again after each further 16 MB, and the first no ends the reading without an error. The
/// error is in the domain "POSIX" and carries the errno and the system's text for it. Only regular
/// files are read: a pipe, socket or device is refused (ENOTSUP) before it can block, a directory
/// with EISDIR. Memory is the file's size and a constant.
std::variant<FileContents, ErrorRecord> readFile(const std::string& path,
                                                 const ReadingTest& isWorthReadingOn = {});

/// Whether `path` exists and is a directory, links followed.
bool isExistingDirectory(const std::string& path);

}  // namespace lumisk
