#pragma once

#include "platform/platform.h"

namespace lumisk {

/// `$XDG_CACHE_HOME` if that is an absolute path (the convention has others ignored), else
/// `$HOME/.cache`, else nothing.
class XdgCachesDirectory final : public CachesDirectory {
 public:
  std::optional<std::string> path() const override;
};

}  // namespace lumisk
