#pragma once

#include <string>

#include "desktop/web_extension/library_map.h"

namespace lumisk::desktop {

/// The client libraries in `folder`, as its manifest lists them, without those that are not there.
/// An empty store when there is no manifest.
LibraryStore readLibraryStore(const std::string& folder);

}  // namespace lumisk::desktop
