#include "bare_walk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace lumisk::bench {
namespace {

std::int64_t walk(int folder) {  // NOLINT(misc-no-recursion): the tree is the benchmark's own
  static std::array<std::byte, std::size_t{64} * 1024> buffer;
  std::int64_t total = 0;
  std::vector<std::string> subfolders;
  for (ssize_t size = 0; (size = getdents64(folder, buffer.data(), buffer.size())) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto* entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
      at += entry->d_reclen;
      struct statx status {};
      if (entry->d_type != DT_DIR) {
        statx(folder, entry->d_name, AT_SYMLINK_NOFOLLOW, STATX_BLOCKS, &status);
        total += static_cast<std::int64_t>(status.stx_blocks) * 512;
      } else if (const std::string_view name = entry->d_name; name != "." && name != "..") {
        subfolders.emplace_back(name);
      }
    }
  }
  for (const std::string& name : subfolders) {
    const int subfolder = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    total += walk(subfolder);
    close(subfolder);
  }
  return total;
}

}  // namespace

std::int64_t bareWalk(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const std::int64_t total = walk(folder);
  close(folder);
  return total;
}

}  // namespace lumisk::bench
