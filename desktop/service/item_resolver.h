#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "core/file_url.h"
#include "desktop/service/preview_host.h"

namespace lumisk::desktop {

using ItemOrReason = std::variant<FileURL, NoItemReason>;

/// Finds the path to what an address names.
class ItemResolver {
 public:
  virtual ~ItemResolver() = default;
  /// Calls `found` once on the main thread: within this call when nothing has to be asked, else
  /// later; never when `resolve` or `cancel` was called again before.
  virtual void resolve(const std::string& uri, std::function<void(ItemOrReason)> found) = 0;
  virtual void cancel() = 0;
};

/// The item of a "file:" address; a reason for what is no address of an absolute URI's form.
/// Nothing for another scheme, whose item the desktop's virtual file system has to be asked for.
std::optional<ItemOrReason> resolveWithoutAsking(std::string_view uri);

}  // namespace lumisk::desktop
