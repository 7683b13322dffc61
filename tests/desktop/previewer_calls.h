#pragma once

#include <gio/gio.h>
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "desktop/gref.h"
#include "support/process.h"

namespace lumisk::test {

inline constexpr const char* kPreviewerName = "org.gnome.NautilusPreviewer";
inline constexpr const char* kPreviewerPath = "/org/gnome/NautilusPreviewer";
inline constexpr const char* kPreviewerInterface = "org.gnome.NautilusPreviewer2";

/// Whether it becomes true within that time, which no test waits for on purpose.
bool eventually(const std::function<bool()>& isTrue,
                std::chrono::seconds longest = std::chrono::seconds(30));

/// Calls what the session bus starts for the name, as a plain client; the answer is on standard
/// output, such as "()\n".
ProcessResult call(const std::string& method, const std::vector<std::string>& arguments,
                   const std::string& name = kPreviewerName,
                   const std::string& path = kPreviewerPath,
                   const std::string& interface = kPreviewerInterface);
ProcessResult show(const std::string& uri, const std::string& handle, bool closes);
/// Whether the service says that something is shown.
bool isVisible();
/// Holds a name on the session bus, as a program that is just ending does.
class HeldName {
 public:
  explicit HeldName(const char* name);
  HeldName(const HeldName&) = delete;
  HeldName& operator=(const HeldName&) = delete;
  ~HeldName() { release(); }
  void release();

 private:
  desktop::GRef<GDBusConnection> connection_;
  const char* name_;
};

/// The process that answers to the name; 0 for none.
pid_t serviceProcess();

}  // namespace lumisk::test
