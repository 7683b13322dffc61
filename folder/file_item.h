#pragma once

#include <string>

#include "folder/uuid.h"
#include "platform/platform.h"

namespace lumisk {

/// One listed entry of a folder, ready to be shown.
struct FileItem {
  Uuid id;           ///< fresh on every load; it identifies the row and nothing else
  std::string name;  ///< the bytes that the file system has
  Icon icon;
  std::string size;  ///< text; "—" for directories, "?" when unknown
  std::string date;  ///< text; "—" when unknown
  bool isDirectory = false;
};

}  // namespace lumisk
