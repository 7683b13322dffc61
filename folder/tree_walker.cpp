#include "folder/tree_walker.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace lumisk {
namespace {

// The unit of stx_blocks, whatever the file system's own blocks are.
constexpr std::int64_t kBlockSize = 512;

[[noreturn]] void failWithOverflow() {
  std::fputs("lumisk: the folder's size is beyond the largest 64-bit number\n", stderr);
  std::abort();
}

std::int64_t allocatedSize(const struct statx& status) {
  std::int64_t size = 0;
  if (__builtin_mul_overflow(status.stx_blocks, kBlockSize, &size)) failWithOverflow();
  return size;
}

}  // namespace

std::int64_t checkedSum(std::int64_t total, std::int64_t size) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(total, size, &sum)) failWithOverflow();
  return sum;
}

void TreeWalker::start(FolderLevel root) { levels_.push_back(std::move(root)); }

void TreeWalker::startWith(FileDescriptor folder) { enter(std::move(folder)); }

bool TreeWalker::step() {
  while (!levels_.empty() && !levels_.back().hasSubfolders()) leave();
  if (levels_.empty()) return false;
  FolderLevel& deepest = levels_.back();
  FileDescriptor folder = openSubfolder(deepest.folder(), deepest.takeSubfolder());
  if (folder.isOpen()) enter(std::move(folder));
  return true;
}

void TreeWalker::enter(FileDescriptor folder) {
  FolderLevel level(std::move(folder));
  read(level);
  if (!level.hasSubfolders()) return;
  levels_.push_back(std::move(level));
  if (levels_.size() > kOpenLevels + 1) levels_[levels_.size() - 1 - kOpenLevels].rest();
}

void TreeWalker::read(FolderLevel& level) {
  reader_.start(level.folder());
  for (DirectoryReader::Entry entry{}; reader_.next(entry);) {
    if (entry.type == DirectoryReader::Type::Folder) {
      level.addSubfolder(entry.name);
    } else {
      count(level, entry);
    }
  }
}

void TreeWalker::count(FolderLevel& level, const DirectoryReader::Entry& entry) {
  constexpr int kAsItIs = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  constexpr unsigned kWanted = STATX_TYPE | STATX_BLOCKS;  // a tenth faster than all of `stat`
  struct statx status {};
  if (statx(level.folder().get(), entry.name, kAsItIs, kWanted, &status) != 0) return;
  if (S_ISDIR(status.stx_mode)) {
    level.addSubfolder(entry.name);
  } else {
    total_ = checkedSum(total_, allocatedSize(status));
  }
}

void TreeWalker::leave() {
  const FolderLevel left = std::move(levels_.back());
  levels_.pop_back();
  if (levels_.empty() || levels_.back().folder().isOpen()) return;
  FolderLevel& level = levels_.back();
  if (level.resume(openParent(left.folder())) || level.resume(openDeepestByNames())) return;
  level.dropSubfolders();
}

FileDescriptor TreeWalker::openDeepestByNames() const {
  FileDescriptor folder = openSubfolder(levels_[0].folder(), levels_[0].takenSubfolder());
  for (std::size_t i = 1; i + 1 < levels_.size() && folder.isOpen(); ++i) {
    folder = openSubfolder(folder, levels_[i].takenSubfolder());
  }
  return folder;
}

std::optional<FolderLevel> TreeWalker::split() {
  const std::size_t size = levels_.size();
  const std::size_t firstOpen = size > kOpenLevels ? size - kOpenLevels : 1;
  for (std::size_t i = 0; i < size; i = std::max(i + 1, firstOpen)) {
    const bool isDeepest = i + 1 == size;
    auto share =
        levels_[i].split(isDeepest ? FolderLevel::Share::Half : FolderLevel::Share::HalfOrLast);
    if (share) return share;
  }
  return std::nullopt;
}

}  // namespace lumisk
