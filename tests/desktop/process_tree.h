#pragma once

#include <unistd.h>

#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace lumisk::test {

/// The process and those it started, WebKit's among them, as lines of process ids.
inline std::vector<std::string> processTree(const std::string& root = std::to_string(getpid())) {
  std::vector<std::string> tree = {root};
  for (std::size_t i = 0; i < tree.size(); ++i) {
    std::ifstream children("/proc/" + tree[i] + "/task/" + tree[i] + "/children");
    for (std::string child; children >> child;) tree.push_back(child);
  }
  return tree;
}

/// The ids of the processes in which `root` shows pages.
inline std::set<std::string> webProcesses(const std::string& root = std::to_string(getpid())) {
  std::set<std::string> found;
  for (const std::string& process : processTree(root)) {
    std::ifstream command("/proc/" + process + "/comm");
    std::string name;
    std::getline(command, name);
    if (name == "WebKitWebProces") found.insert(process);  // the kernel cuts names
  }
  return found;
}

}  // namespace lumisk::test
