#pragma once

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "desktop/gref.h"
#include "desktop/service/owned.h"

namespace lumisk::desktop::test {

/// A message bus for one test, with nobody on it but who connects here.
class PrivateBus {
 public:
  PrivateBus() : bus_(GRef<GTestDBus>::adopt(g_test_dbus_new(G_TEST_DBUS_NONE))) {
    g_test_dbus_up(bus_.get());
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus() { g_test_dbus_down(bus_.get()); }

  GRef<GDBusConnection> connect() const {
    ErrorSlot error;
    const auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    auto connection = GRef<GDBusConnection>::adopt(g_dbus_connection_new_for_address_sync(
        g_test_dbus_get_bus_address(bus_.get()), flags, nullptr, nullptr, &error));
    EXPECT_TRUE(connection) << error.message();
    return connection;
  }
  /// To be called for each connection before the bus goes.
  static void close(GRef<GDBusConnection>& connection) {
    g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    connection = {};
  }

 private:
  GRef<GTestDBus> bus_;
};

}  // namespace lumisk::desktop::test
