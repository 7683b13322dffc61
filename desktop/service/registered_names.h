#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// The previewers' names for which the bus starts Lumisk. Only those are ours to answer to: a
/// person who opens one file with Lumisk has not chosen it as the file manager's previewer.
class RegisteredNames {
 public:
  RegisteredNames();
  RegisteredNames(const RegisteredNames&) = delete;
  RegisteredNames& operator=(const RegisteredNames&) = delete;

  std::vector<std::string> names() const;
  /// Called when service files have come or gone.
  std::function<void()> onChanged;

 private:
  static void changed(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent, gpointer self);

  GRef<GFileMonitor> monitor_;
  std::unique_ptr<SignalHandler> handler_;
  Deferred settled_;
};

}  // namespace lumisk::desktop
