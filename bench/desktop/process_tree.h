#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace lumisk::bench {

struct TreeProcess {
  pid_t id;
  std::string name;
  /// Proportional set size: a page that several processes share counts for each its part of it.
  long kilobytes;
};

/// A process and all that it started, WebKit's processes among them.
std::vector<TreeProcess> processTree(pid_t root);

long memoryOf(const std::vector<TreeProcess>& tree);
int openDescriptors(pid_t process);

}  // namespace lumisk::bench
