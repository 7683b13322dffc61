#pragma once

#include <vector>

#include "folder/file_item.h"
#include "platform/platform.h"

namespace lumisk {

/// `items` with the directories first, then by name as `collation` has it; items whose names have
/// equal keys keep their order. A key is made once for each item, because making one costs as much
/// as some hundred comparisons.
std::vector<FileItem> inFolderOrder(std::vector<FileItem> items, const Collation& collation);

}  // namespace lumisk
