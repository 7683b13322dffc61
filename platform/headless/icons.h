#pragma once

#include "platform/platform.h"

namespace lumisk {

/// Icons by the names of freedesktop.org's icon naming standard, which every theme has: a folder's
/// by kind, a file's by its extension. A file of unknown kind has the generic text icon, because
/// text is what its preview shows.
class HeadlessIcons final : public Icons {
 public:
  Icon iconForFile(std::string_view path, std::optional<bool> isDirectory) const override;
};

}  // namespace lumisk
