#include "bench/desktop/process_tree.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace lumisk::bench {
namespace {

std::string folderOf(pid_t process) { return "/proc/" + std::to_string(process); }

std::string nameOf(pid_t process) {
  std::error_code error;
  return std::filesystem::read_symlink(folderOf(process) + "/exe", error).filename();
}

long kilobytesOf(pid_t process) {
  std::ifstream rollup(folderOf(process) + "/smaps_rollup");
  for (std::string line; std::getline(rollup, line);)
    if (line.starts_with("Pss:")) return std::stol(line.substr(4));
  return 0;
}

/// Each thread has its own list of those it started.
void addChildren(pid_t process, std::vector<pid_t>& ids) {
  std::error_code error;
  for (const auto& thread :
       std::filesystem::directory_iterator(folderOf(process) + "/task", error)) {
    std::ifstream children(thread.path() / "children");
    for (pid_t child = 0; children >> child;) ids.push_back(child);
  }
}

}  // namespace

std::vector<TreeProcess> processTree(pid_t root) {
  std::vector<pid_t> ids = {root};
  for (std::size_t i = 0; i < ids.size(); ++i) addChildren(ids[i], ids);
  std::vector<TreeProcess> tree;
  for (const pid_t id : ids) tree.push_back({id, nameOf(id), kilobytesOf(id)});
  return tree;
}

long memoryOf(const std::vector<TreeProcess>& tree) {
  long total = 0;
  for (const TreeProcess& process : tree) total += process.kilobytes;
  return total;
}

int openDescriptors(pid_t process) {
  std::error_code error;
  const std::filesystem::directory_iterator folder(folderOf(process) + "/fd", error);
  return static_cast<int>(std::distance(begin(folder), end(folder)));
}

}  // namespace lumisk::bench
