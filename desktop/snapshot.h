#pragma once

#include <optional>
#include <string>

#include "desktop/panel_size.h"
#include "desktop/web_engine.h"

namespace lumisk::desktop {

struct SnapshotRequest {
  std::string path;    ///< a path or a "file:" URI
  std::string output;  ///< where the PNG file is written
  bool isDark = false;
  std::optional<Size> size;
  std::string mode;  ///< empty: the mode in which the preview opens
};

/// Writes a picture of what the panel shows of the item once it is complete. Needs a display, real
/// or virtual. Returns the process's exit status and tells on standard error what went wrong.
int takeSnapshot(const SnapshotRequest& request, const EngineFiles& files);

}  // namespace lumisk::desktop
