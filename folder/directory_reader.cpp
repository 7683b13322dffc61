#include "folder/directory_reader.h"

#include <dirent.h>
#include <fcntl.h>

#include <cstring>

namespace lumisk {
namespace {

constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

bool isSelfOrParent(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

DirectoryReader::Type typeOf(unsigned char kernelType) {
  if (kernelType == DT_DIR) return DirectoryReader::Type::Folder;
  return kernelType == DT_UNKNOWN ? DirectoryReader::Type::Unknown : DirectoryReader::Type::Other;
}

}  // namespace

FileDescriptor openFolder(const char* path) { return FileDescriptor(open(path, kOpenFolder)); }

FileDescriptor openSubfolder(const FileDescriptor& folder, const char* name) {
  return FileDescriptor(openat(folder.get(), name, kOpenFolder | O_NOFOLLOW));
}

FileDescriptor openParent(const FileDescriptor& folder) { return openSubfolder(folder, ".."); }

void DirectoryReader::start(const FileDescriptor& folder) {
  descriptor_ = folder.get();
  at_ = end_ = 0;
  hasFailed_ = false;
}

bool DirectoryReader::refill() {
  const ssize_t size = getdents64(descriptor_, buffer_.get(), kBufferSize);
  hasFailed_ = size < 0;
  at_ = 0;
  end_ = size > 0 ? static_cast<std::size_t>(size) : 0;
  return end_ > 0;
}

bool DirectoryReader::next(Entry& entry) {
  while (true) {
    if (at_ == end_ && !refill()) return false;
    const auto* record = reinterpret_cast<const dirent64*>(buffer_.get() + at_);
    at_ += record->d_reclen;
    if (isSelfOrParent(record->d_name)) continue;
    entry = {record->d_name, typeOf(record->d_type)};
    return true;
  }
}

}  // namespace lumisk
