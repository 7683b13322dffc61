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

/// To be the previewer, on behalf of the session bus.
struct ServiceRequest {};

/// To have the bus look at its service files again.
struct ReloadBusRequest {};

struct HelpRequest {};

struct WrongUsage {
  std::string sentence;
};

using PreviewerArguments = std::variant<OpenRequest, SnapshotRequest, ServiceRequest,
                                        ReloadBusRequest, HelpRequest, WrongUsage>;

/// Reads the words after the program's name: files to open, a snapshot to take, or what
/// the bus and `lumisk integrate` ask for.
PreviewerArguments parsePreviewerArguments(const std::vector<std::string_view>& words);

}  // namespace lumisk::desktop
