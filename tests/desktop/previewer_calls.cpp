#include "previewer_calls.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <utility>

#include "desktop/service/owned.h"

namespace lumisk::test {

bool eventually(const std::function<bool()>& isTrue, std::chrono::seconds longest) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + longest;
  while (steady_clock::now() < end) {
    if (isTrue()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

ProcessResult call(const std::string& method, const std::vector<std::string>& arguments,
                   const std::string& name, const std::string& path, const std::string& interface) {
  std::vector<std::string> words = {"/usr/bin/env",
                                    "gdbus",
                                    "call",
                                    "--session",
                                    "--dest",
                                    name,
                                    "--object-path",
                                    path,
                                    "--method",
                                    interface + "." + method,
                                    "--"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return runProcess(words);
}

ProcessResult show(const std::string& uri, const std::string& handle, bool closes) {
  return call("ShowFile", {uri, handle, closes ? "true" : "false"});
}

bool isVisible() {
  return call("Get", {kPreviewerInterface, "Visible"}, kPreviewerName, kPreviewerPath,
              "org.freedesktop.DBus.Properties")
             .standardOutput == "(<true>,)\n";
}

HeldName::HeldName(const char* name)
    : connection_(desktop::GRef<GDBusConnection>::adopt(
          g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))),
      name_(name) {
  desktop::ErrorSlot error;
  constexpr guint32 kDoNotQueue = 4;
  constexpr guint32 kOwner = 1;
  const desktop::OwnedVariant answer(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "RequestName", g_variant_new("(su)", name, kDoNotQueue), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
      nullptr, &error));
  guint32 standing = 0;
  if (answer) g_variant_get(answer.get(), "(u)", &standing);
  EXPECT_EQ(standing, kOwner) << name << ": " << (answer ? "somebody has it" : error.message());
}

void HeldName::release() {
  if (name_ == nullptr) return;
  const desktop::OwnedVariant answer(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "ReleaseName", g_variant_new("(s)", std::exchange(name_, nullptr)), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

pid_t serviceProcess() {
  const std::string answer =
      call("GetConnectionUnixProcessID", {kPreviewerName}, "org.freedesktop.DBus",
           "/org/freedesktop/DBus", "org.freedesktop.DBus")
          .standardOutput;
  const std::size_t number = answer.find(' ');
  return number == std::string::npos ? 0 : std::stoi(answer.substr(number));
}

}  // namespace lumisk::test
