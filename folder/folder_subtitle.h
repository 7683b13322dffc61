#pragma once

#include <string>

#include "folder/folder_state.h"
#include "platform/platform.h"

namespace lumisk {

/// The line below the folder's name, of what is known so far: "12 items, 3 hidden, 4.0 MB -
/// Modified: 21 Nov 2026, 14:05". A count of 0 is not mentioned.
std::string buildFolderSubtitle(const FolderState& folder, const StringTable& strings);

}  // namespace lumisk
