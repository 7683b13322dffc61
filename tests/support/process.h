#pragma once

#include <string>
#include <vector>

namespace lumisk::test {

/// How a program ended and what it wrote.
struct ProcessResult {
  int exitStatus = -1;  ///< 128 + the signal's number when a signal ended it
  std::string standardOutput;
  std::string standardError;
};

struct ProcessOptions {
  std::string workingDirectory = {};
  /// Closes standard output's reader before the program has written anything.
  bool closeReader = false;
  /// Runs with a broken pipe reported as an error, as under many other programs, not by a signal.
  bool ignoreBrokenPipe = false;
  /// Writes to a full standard output fail instead of waiting, as with pipes of event-driven
  /// readers.
  bool nonBlockingOutput = false;
};

/// Runs `words` (the first is the program's path) to its end, with an empty standard input.
ProcessResult runProcess(const std::vector<std::string>& words, const ProcessOptions& options = {});

}  // namespace lumisk::test
