#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "desktop/snapshot.h"

namespace lumisk::desktop {

struct OpenRequest {
  std::vector<std::string> paths;
};

struct WrongUsage {
  std::string sentence;
};

using PreviewerArguments = std::variant<OpenRequest, SnapshotRequest, WrongUsage>;

/// Reads the words after the program's name: files to open, or a snapshot to take.
PreviewerArguments parsePreviewerArguments(const std::vector<std::string_view>& words);

}  // namespace lumisk::desktop
