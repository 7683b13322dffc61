#pragma once

#include <string>
#include <vector>

#include "desktop/web_engine.h"

namespace lumisk::desktop {

/// Has the running previewer show what these URIs name, or starts one that outlives this process.
/// Where there is no session bus the window belongs to this process. Returns the exit status.
int openInPreviewer(std::vector<std::string> uris, const EngineFiles& files);

/// Is the previewer, on behalf of the session bus, until nothing was shown for long. Returns the
/// exit status.
int servePreviewer(const EngineFiles& files);

}  // namespace lumisk::desktop
