#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/file_url.h"
#include "folder/folder_items.h"
#include "platform/platform.h"

namespace lumisk {

/// What a folder view knows of its folder. It starts empty; blocks on the main queue fill it.
struct FolderState {
  FileURL folderURL;
  std::shared_ptr<const FolderItems> items =
      std::make_shared<const FolderItems>(std::vector<FileItem>());
  std::int64_t totalCount = 0;   ///< how many `items` there are
  std::int64_t hiddenCount = 0;  ///< how many entries were left out as hidden
  std::optional<std::string> folderSizeStr = {};
  std::optional<std::string> folderDateStr = {};
  std::shared_ptr<const DateFormatter> dateFormatter;  ///< for every date of the view
};

}  // namespace lumisk
