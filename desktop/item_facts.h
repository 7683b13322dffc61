#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/error_record.h"
#include "core/file_url.h"
#include "platform/platform.h"

namespace lumisk::desktop {

/// What can be said of an item without showing it.
struct ItemFacts {
  std::string iconName;
  std::string name;
  std::string contentType;           ///< empty when the item cannot be looked at
  std::string kind;                  ///< "PNG image"
  std::vector<std::string> details;  ///< kind, size, dates; each a short text
  std::uint64_t size = 0;            ///< of a file, in bytes
  bool isFolder = false;
  /// Whether reading it takes longer than the panel should answer no key.
  bool isLarge = false;
};

ItemFacts readItemFacts(const FileURL& url, const Platform& platform);

/// What went wrong, in one sentence for a person; for a file that is no text, what it is instead.
std::string failureSentence(const ErrorRecord& error, const ItemFacts& facts);

}  // namespace lumisk::desktop
