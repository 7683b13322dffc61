#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "folder/file_item.h"
#include "platform/platform.h"

namespace lumisk {

struct FolderListing {
  std::vector<FileItem> items;
  std::int64_t hiddenCount = 0;
};

/// The visible entries of the folder at `path`: directories first, then by name in the person's
/// order; names that differ at most in case keep the order of the file system. Nothing when the
/// folder cannot be listed.
///
/// An entry is looked at as it is: a symbolic link is a small file, though with the icon of a
/// folder where it leads to one. One that cannot be looked at is listed all the same, as a file of
/// unknown size and date.
std::optional<FolderListing> listFolder(const std::string& path, const DateFormatter& dateFormatter,
                                        const Platform& platform);

}  // namespace lumisk
