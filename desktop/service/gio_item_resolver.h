#pragma once

#include <gio/gio.h>

#include "desktop/gref.h"
#include "desktop/service/item_resolver.h"

namespace lumisk::desktop {

/// Asks the desktop's virtual file system for the path to what "trash:", "recent:", "mtp:", "smb:"
/// and their like name: either the item stands for a file elsewhere, or its file system is mounted
/// where programs that know nothing of it can read.
class GioItemResolver final : public ItemResolver {
 public:
  GioItemResolver() = default;
  GioItemResolver(const GioItemResolver&) = delete;
  GioItemResolver& operator=(const GioItemResolver&) = delete;
  ~GioItemResolver() override { cancel(); }

  void resolve(const std::string& uri, std::function<void(ItemOrReason)> found) override;
  void cancel() override;

 private:
  static void answered(GObject* source, GAsyncResult* result, gpointer question);
  void ask(const std::string& uri, std::function<void(ItemOrReason)> found);

  GRef<GCancellable> running_;
  Deferred timeLimit_;
};

}  // namespace lumisk::desktop
