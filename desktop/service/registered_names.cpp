#include "desktop/service/registered_names.h"

#include "platform/data_directories.h"
#include "platform/service_file.h"

namespace lumisk::desktop {

namespace {

/// One `lumisk integrate` writes several files.
constexpr unsigned kSettlingMilliseconds = 50;

}  // namespace

RegisteredNames::RegisteredNames() {
  const auto home = dataHome();
  if (!home) return;
  const auto folder = GRef<GFile>::adopt(g_file_new_for_path(serviceFolderOf(*home).c_str()));
  monitor_ = GRef<GFileMonitor>::adopt(
      g_file_monitor_directory(folder.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
  if (!monitor_) return;
  handler_ = std::make_unique<SignalHandler>(monitor_.get(), "changed",
                                             G_CALLBACK(&RegisteredNames::changed), this);
}

std::vector<std::string> RegisteredNames::names() const {
  std::vector<std::string> registered;
  for (const std::string_view name : kPreviewerNames) {
    if (isLumiskRegisteredFor(name)) registered.emplace_back(name);
  }
  return registered;
}

void RegisteredNames::changed(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent, gpointer self) {
  auto* const registered = static_cast<RegisteredNames*>(self);
  registered->settled_.after(kSettlingMilliseconds, [registered] {
    if (registered->onChanged) registered->onChanged();
  });
}

}  // namespace lumisk::desktop
