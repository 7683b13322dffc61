#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lumisk {

enum ExitStatus : int {
  kExitSuccess = 0,
  kExitFailure = 1,
  kExitUsage = 2,
  kExitNotIntegrated = 3
};

/// Runs the command with the words after the program's name; returns its exit status.
int runCommand(const std::vector<std::string_view>& words);

/// Writes "lumisk: ", `sentence` and a line feed to standard error. Control characters, which a
/// file name may hold to play with the terminal, become "?".
void complain(std::string_view sentence);

/// Complains that standard output cannot be written, unless the reader has merely gone away: then
/// it wanted no more, and all is well. Returns the exit status; `error` is an errno or 0.
int exitStatusOfWriting(int error);

}  // namespace lumisk
