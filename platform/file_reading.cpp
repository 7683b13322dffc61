#include "platform/file_reading.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

#include "platform/file_descriptor.h"

namespace lumisk {

namespace {

// A whole huge page. Faulting fresh memory in page by page costs more than all that a builder does
// with it, so the memory of a large file is asked for in pages of this size.
constexpr std::size_t kHugePage = std::size_t{2} * 1024 * 1024;
constexpr std::size_t kSmallestCapacity = std::size_t{16} * 1024;
constexpr std::size_t kBeginning = std::size_t{64} * 1024;
constexpr std::size_t kBetweenTests = std::size_t{16} * 1024 * 1024;

ErrorRecord posixError(int code) {
  return {kPosixErrorDomain, code, std::generic_category().message(code)};
}

ErrorRecord notAFileError(mode_t mode) {
  const char* what = S_ISFIFO(mode) ? "named pipe" : S_ISSOCK(mode) ? "socket" : "device";
  ErrorRecord error = posixError(ENOTSUP);
  error.localizedDescription += std::string(": the item is a ") + what + ", not a file";
  return error;
}

}  // namespace

FileContents::FileContents(FileContents&& other) noexcept
    : memory_(std::exchange(other.memory_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

FileContents& FileContents::operator=(FileContents&& other) noexcept {
  std::swap(memory_, other.memory_);
  std::swap(size_, other.size_);
  std::swap(capacity_, other.capacity_);
  return *this;
}

FileContents::~FileContents() {
  if (capacity_ > 0) ::munmap(memory_, capacity_);
}

// Fills one FileContents. All functions return 0 or an errno.
class FileReading {
 public:
  int read(int descriptor, std::size_t expectedSize, const ReadingTest& isWorthReadingOn) {
    // One byte more than expected lets the read that meets the end of the file be the last.
    const std::size_t expected = expectedSize + 1;
    const bool isTested = static_cast<bool>(isWorthReadingOn);
    std::size_t nextTest = isTested ? kBeginning : std::numeric_limits<std::size_t>::max();
    // A file that fails the first test needs no more memory than for that.
    if (const int error = grow(std::min(expected, nextTest))) return error;
    for (;;) {
      if (contents_.size_ == nextTest) {
        if (!isWorthReadingOn(contents_.bytes())) return 0;
        nextTest += kBetweenTests;
      }
      if (contents_.size_ == contents_.capacity_) {
        if (contents_.capacity_ > std::numeric_limits<std::size_t>::max() / 2) return EFBIG;
        if (const int error = grow(std::max(expected, contents_.capacity_ * 2))) return error;
      }
      const ssize_t count = ::read(descriptor, contents_.memory_ + contents_.size_,
                                   std::min(contents_.capacity_, nextTest) - contents_.size_);
      if (count == 0) return 0;
      if (count > 0) {
        contents_.size_ += static_cast<std::size_t>(count);
      } else if (errno != EINTR) {
        return errno;
      }
    }
  }

  FileContents take() { return std::move(contents_); }

 private:
  int grow(std::size_t capacity) {
    capacity = std::max(capacity, kSmallestCapacity);
    void* const memory =
        contents_.capacity_ == 0
            ? ::mmap(nullptr, capacity, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)
            : ::mremap(contents_.memory_, contents_.capacity_, capacity, MREMAP_MAYMOVE);
    if (memory == MAP_FAILED) return errno;
    contents_.memory_ = static_cast<char*>(memory);
    contents_.capacity_ = capacity;
    // Advice only: where the kernel has no huge pages it reads a little slower.
    if (capacity >= kHugePage) ::madvise(memory, capacity, MADV_HUGEPAGE);
    return 0;
  }

  FileContents contents_;
};

std::variant<FileContents, ErrorRecord> readFile(const std::string& path,
                                                 const ReadingTest& isWorthReadingOn) {
  struct stat status = {};
  // Opening a device can act on it (a tape rewinds), so it is looked at before it is opened; and
  // since another item may take its place in between, it is looked at again, opened without
  // waiting.
  if (::stat(path.c_str(), &status) != 0) return posixError(errno);
  if (S_ISDIR(status.st_mode)) return posixError(EISDIR);
  if (!S_ISREG(status.st_mode)) return notAFileError(status.st_mode);

  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return posixError(errno);
  if (S_ISDIR(status.st_mode)) return posixError(EISDIR);
  if (!S_ISREG(status.st_mode)) return notAFileError(status.st_mode);

  FileReading reading;
  const auto size = static_cast<std::size_t>(status.st_size);
  if (const int error = reading.read(file.get(), size, isWorthReadingOn)) return posixError(error);
  return reading.take();
}

bool isExistingDirectory(const std::string& path) {
  struct stat status = {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace lumisk
