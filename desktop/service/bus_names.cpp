#include "desktop/service/bus_names.h"

#include <algorithm>

namespace lumisk::desktop {

void BusNames::claim(const std::vector<std::string>& names) {
  std::erase_if(claims_, [&](const Claim& claim) {
    const bool isKept = std::find(names.begin(), names.end(), claim.name) != names.end();
    if (!isKept) g_bus_unown_name(claim.id);
    return !isKept;
  });
  for (const std::string& name : names) {
    const auto isClaimed = [&](const Claim& claim) { return claim.name == name; };
    if (std::any_of(claims_.begin(), claims_.end(), isClaimed)) continue;
    const guint id =
        g_bus_own_name_on_connection(connection_.get(), name.c_str(), G_BUS_NAME_OWNER_FLAGS_NONE,
                                     nullptr, nullptr, nullptr, nullptr);
    claims_.push_back({name, id});
  }
}

void BusNames::release() { claim({}); }

bool waitUntilFree(GDBusConnection* connection, const char* name, unsigned longestMilliseconds) {
  bool isFree = false;
  const auto vanished = [](GDBusConnection*, const char*, gpointer free) {
    *static_cast<bool*>(free) = true;
  };
  const guint watch = g_bus_watch_name_on_connection(
      connection, name, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, vanished, &isFree, nullptr);
  bool isOver = false;
  Deferred limit;
  limit.after(longestMilliseconds, [&] { isOver = true; });
  while (!isFree && !isOver) g_main_context_iteration(nullptr, TRUE);
  g_bus_unwatch_name(watch);
  return isFree;
}

}  // namespace lumisk::desktop
