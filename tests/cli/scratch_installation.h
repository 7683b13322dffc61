#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumisk::test {

/// The command in a folder of its own, with a previewer beside it that only notes how it was
/// called, and a home of its own.
class ScratchInstallation {
 public:
  ScratchInstallation() {
    namespace fs = std::filesystem;
    for (const auto& part : {root / "bin", root / "libexec", root / "home"}) {
      fs::create_directories(part);
    }
    fs::copy_file(LUMISK_COMMAND, root / "bin/lumisk");
    installPreviewer();
  }

  void installPreviewer() const {
    writeAll(previewer(),
             "#!/bin/sh\nprintf '%s\\n' \"$@\" >>'" + (root / "calls").string() + "'\n");
    std::filesystem::permissions(previewer(), std::filesystem::perms::owner_all);
  }

  /// Runs the command with nothing in its environment but `environment` ("NAME=value") and HOME.
  ProcessResult run(const std::vector<std::string>& words,
                    const std::vector<std::string>& environment = {},
                    const ProcessOptions& options = {}) const {
    std::vector<std::string> all = {"/usr/bin/env", "-i", "HOME=" + (root / "home").string(),
                                    "XDG_DATA_DIRS=" + (root / "system").string()};
    all.insert(all.end(), environment.begin(), environment.end());
    all.push_back(root / "bin/lumisk");
    all.insert(all.end(), words.begin(), words.end());
    return runProcess(all, options);
  }

  std::filesystem::path previewer() const { return root / "libexec/lumisk-previewer"; }
  /// The words that the previewer was called with, one a line.
  std::string calls() const {
    return std::filesystem::exists(root / "calls") ? readAll(root / "calls") : "";
  }

 private:
  TemporaryFolder folder_;

 public:
  /// With a blank in it, which everything has to put up with.
  const std::filesystem::path root = folder_ / "a folder";
};

}  // namespace lumisk::test
