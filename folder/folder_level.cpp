#include "folder/folder_level.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

namespace lumisk {

const char* FolderLevel::takeSubfolder() {
  taken_ = next_;
  next_ = names_.find('\0', next_) + 1;
  return takenSubfolder();
}

void FolderLevel::rest() {
  struct stat status {};
  if (fstat(folder_.get(), &status) != 0) return;
  device_ = status.st_dev;
  inode_ = status.st_ino;
  folder_.reset();
}

bool FolderLevel::resume(FileDescriptor folder) {
  struct stat status {};
  if (!folder.isOpen() || fstat(folder.get(), &status) != 0) return false;
  if (status.st_dev != device_ || status.st_ino != inode_) return false;
  folder_ = std::move(folder);
  return true;
}

std::optional<FolderLevel> FolderLevel::split(Share share) {
  if (!hasSubfolders() || !folder_.isOpen()) return std::nullopt;
  const std::size_t middle = next_ + (names_.size() - next_) / 2;
  std::size_t cut = names_.rfind('\0', middle - 1) + 1;   // start of the name in the middle
  if (cut <= next_) cut = names_.find('\0', middle) + 1;  // it is the first: start of the second
  if (cut == names_.size() && share == Share::HalfOrLast) cut = next_;
  if (cut == names_.size()) return std::nullopt;

  FolderLevel other(FileDescriptor(fcntl(folder_.get(), F_DUPFD_CLOEXEC, 0)));
  if (!other.folder_.isOpen()) return std::nullopt;
  other.names_ = names_.substr(cut);
  names_.resize(cut);
  return other;
}

}  // namespace lumisk
