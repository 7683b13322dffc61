#include <new>
#include <string_view>
#include <vector>

#include "cli/command.h"

int main(int argc, char** argv) {
  try {
    return lumisk::runCommand(std::vector<std::string_view>(argv + 1, argv + argc));
  } catch (const std::bad_alloc&) {
    lumisk::complain("out of memory");
    return lumisk::kExitFailure;
  }
}
