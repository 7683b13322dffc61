#include "deep_tree.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "folder/directory_reader.h"

namespace lumisk::test {
namespace {

constexpr const char* kFile = "side/file";

std::int64_t makeSide(const FileDescriptor& folder) {
  EXPECT_EQ(mkdirat(folder.get(), "side", 0700), 0);
  const FileDescriptor file(openat(folder.get(), kFile, O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
  EXPECT_EQ(write(file.get(), "x", 1), 1);
  struct stat status {};
  EXPECT_EQ(fstat(file.get(), &status), 0);
  return std::int64_t{status.st_blocks} * 512;
}

}  // namespace

DeepTree::DeepTree(std::filesystem::path root, int levels) : root_(std::move(root)) {
  FileDescriptor folder = openFolder(root_.c_str());
  for (int i = 0; i < levels; ++i) {
    allocatedSize_ += makeSide(folder);
    EXPECT_EQ(mkdirat(folder.get(), "a", 0700), 0);
    folder = openSubfolder(folder, "a");
    EXPECT_TRUE(folder.isOpen());
  }
}

// By hand and from the bottom: the library's way opens a descriptor for each level.
DeepTree::~DeepTree() {
  FileDescriptor folder = openFolder(root_.c_str());
  int depth = 0;
  for (FileDescriptor next = openSubfolder(folder, "a"); next.isOpen();
       next = openSubfolder(folder, "a")) {
    folder = std::move(next);
    ++depth;
  }
  for (; depth >= 0; --depth) {
    unlinkat(folder.get(), "a", AT_REMOVEDIR);
    unlinkat(folder.get(), kFile, 0);
    unlinkat(folder.get(), "side", AT_REMOVEDIR);
    folder = openParent(folder);
  }
}

}  // namespace lumisk::test
