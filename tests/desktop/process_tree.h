#pragma once

#include <unistd.h>

#include <fstream>
#include <set>
#include <sstream>
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

/// The time that the process has computed so far, in ticks of the clock.
inline long computedTicks(const std::string& process) {
  std::ifstream file("/proc/" + process + "/stat");
  std::string line;
  std::getline(file, line);
  // The name, in brackets, is the second field and may hold blanks.
  std::istringstream fields(line.substr(line.rfind(')') + 1));
  constexpr int kFieldsBetween = 11;
  std::string field;
  for (int i = 0; i < kFieldsBetween; ++i) fields >> field;
  long ticks = 0;
  fields >> ticks;
  return ticks;
}

}  // namespace lumisk::test
