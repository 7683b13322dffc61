#pragma once

#include "platform/platform.h"

namespace lumisk {

/// Hidden as the desktop's file manager has it: a leading full stop, or a line of its own in the
/// folder's file ".hidden".
class HeadlessHiddenNames final : public HiddenNames {
 public:
  std::function<bool(std::string_view name)> inFolder(std::string_view folderPath) const override;
};

}  // namespace lumisk
