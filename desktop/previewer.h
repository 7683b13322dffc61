#pragma once

#include <string>
#include <vector>

#include "desktop/web_engine.h"

namespace lumisk::desktop {

inline constexpr const char* kApplicationId = "org.lumisk.Previewer";

/// Runs the previewer, or hands the files to the one that runs already. Returns the exit status.
int runPreviewer(const std::vector<std::string>& paths, const EngineFiles& files);

}  // namespace lumisk::desktop
