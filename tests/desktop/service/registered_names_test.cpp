#include "desktop/service/registered_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "desktop/service/owned.h"
#include "main_loop.h"
#include "platform/service_file.h"
#include "private_bus.h"
#include "support/files.h"

namespace lumisk::desktop {
namespace {

using lumisk::test::TemporaryFolder;
using lumisk::test::writeAll;
using testing::ElementsAre;
using testing::IsEmpty;

void reload(GDBusConnection* connection) {
  const OwnedVariant answer(g_dbus_connection_call_sync(
      connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "ReloadConfig", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

TEST(RegisteredNames, FollowTheServiceFilesWhenTheBusDoes) {
  const TemporaryFolder home;
  setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  // Before this machine's packages, which may be ours.
  const TemporaryFolder system;
  setenv("XDG_DATA_DIRS", system.path().c_str(), 1);
  unsetenv("XDG_RUNTIME_DIR");
  std::filesystem::create_directories(serviceFolderOf(system.path().string()));
  for (const std::string_view name : kPreviewerNames) {
    writeAll(serviceFilePath(system.path().string(), name), "[D-BUS Service]\nExec=/opt/other\n");
  }
  const test::PrivateBus bus;
  GRef<GDBusConnection> connection = bus.connect();
  {
    RegisteredNames registered(connection.get());
    EXPECT_THAT(registered.names(), IsEmpty());
    int changes = 0;
    registered.onChanged = [&] { ++changes; };

    const std::string name = "org.nemo.Preview";
    std::filesystem::create_directories(serviceFolderOf(home.path().string()));
    writeAll(serviceFilePath(home.path().string(), name),
             *serviceFileText(name, "/a/lumisk-previewer"));
    reload(connection.get());
    EXPECT_TRUE(test::runUntil([&] { return changes == 1; }));
    EXPECT_THAT(registered.names(), ElementsAre(name));
  }
  test::PrivateBus::close(connection);
}

}  // namespace
}  // namespace lumisk::desktop
