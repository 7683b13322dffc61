#include "desktop/service/registered_names.h"

#include "platform/service_file.h"

namespace lumisk::desktop {

RegisteredNames::RegisteredNames(GDBusConnection* connection)
    : connection_(GRef<GDBusConnection>::retain(connection)),
      subscription_(g_dbus_connection_signal_subscribe(
          connection, "org.freedesktop.DBus", "org.freedesktop.DBus", "ActivatableServicesChanged",
          nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE, &RegisteredNames::changed, this, nullptr)) {}

RegisteredNames::~RegisteredNames() {
  g_dbus_connection_signal_unsubscribe(connection_.get(), subscription_);
}

std::vector<std::string> RegisteredNames::names() const {
  std::vector<std::string> registered;
  for (const std::string_view name : kPreviewerNames) {
    if (isLumiskRegisteredFor(name)) registered.emplace_back(name);
  }
  return registered;
}

void RegisteredNames::changed(GDBusConnection*, const char*, const char*, const char*, const char*,
                              GVariant*, gpointer self) {
  const auto* registered = static_cast<RegisteredNames*>(self);
  if (registered->onChanged) registered->onChanged();
}

}  // namespace lumisk::desktop
