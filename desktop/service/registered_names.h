#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// The previewers' names for which the bus starts Lumisk. Only those are ours to answer to: a
/// person who opens one file with Lumisk has not chosen it as the file manager's previewer.
class RegisteredNames {
 public:
  explicit RegisteredNames(GDBusConnection* connection);
  RegisteredNames(const RegisteredNames&) = delete;
  RegisteredNames& operator=(const RegisteredNames&) = delete;
  ~RegisteredNames();

  std::vector<std::string> names() const;
  /// Called when the bus has looked at its service files anew.
  std::function<void()> onChanged;

 private:
  static void changed(GDBusConnection*, const char*, const char*, const char*, const char*,
                      GVariant*, gpointer self);

  GRef<GDBusConnection> connection_;
  guint subscription_;
};

}  // namespace lumisk::desktop
