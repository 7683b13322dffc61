#include "bench/desktop/raced_previewer.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/desktop/previewer.h"
#include "bench/desktop/process_tree.h"
#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"

namespace lumisk::bench {
namespace {

using namespace desktop;

constexpr double kLongestStop = 20;  // seconds
constexpr double kStep = 0.005;      // seconds

std::filesystem::path serviceFolder(const std::string& command) {
  std::string pattern = (std::filesystem::temp_directory_path() / "race-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    std::perror("race_bench: a folder for the service file");
    std::exit(1);
  }
  const std::filesystem::path folder = pattern;
  std::ofstream(folder / (std::string(kFilesPreviewerName) + ".service"))
      << "[D-BUS Service]\nName=" << kFilesPreviewerName << "\nExec=" << command << "\n";
  return folder;
}

/// A test's bus takes the display out of the environment, which the next one hands to its programs.
GTestDBus* startedBus(const std::filesystem::path& services) {
  const std::string display = std::getenv("DISPLAY");
  GTestDBus* bus = g_test_dbus_new(G_TEST_DBUS_NONE);
  g_test_dbus_add_service_dir(bus, services.c_str());
  g_test_dbus_up(bus);
  setenv("DISPLAY", display.c_str(), 1);
  return bus;
}

}  // namespace

RacedPreviewer::RacedPreviewer(const std::string& label, const std::string& command)
    : label_(label),
      services_(serviceFolder(command)),
      bus_(startedBus(services_)),
      connection_(nullptr) {
  constexpr auto kFlags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  ErrorSlot error;
  connection_ = g_dbus_connection_new_for_address_sync(g_test_dbus_get_bus_address(bus_), kFlags,
                                                       nullptr, nullptr, &error);
  if (connection_ != nullptr) return;
  std::fprintf(stderr, "race_bench: no bus: %s\n", error.message());
  std::exit(1);
}

RacedPreviewer::~RacedPreviewer() {
  stop();
  g_dbus_connection_close_sync(connection_, nullptr, nullptr);
  g_object_unref(connection_);
  g_test_dbus_stop(bus_);
  g_object_unref(bus_);
  std::error_code error;
  std::filesystem::remove_all(services_, error);
}

GVariant* RacedPreviewer::askBus(const char* method, GVariant* arguments) const {
  return g_dbus_connection_call_sync(connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                     "org.freedesktop.DBus", method, arguments, nullptr,
                                     G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
}

void RacedPreviewer::call(const char* method, GVariant* arguments) const {
  g_dbus_connection_call(connection_, kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface,
                         method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr,
                         nullptr);
  g_dbus_connection_flush_sync(connection_, nullptr, nullptr);
}

void RacedPreviewer::start() const {
  const OwnedVariant answer(
      askBus("StartServiceByName", g_variant_new("(su)", kFilesPreviewerName, 0)));
  if (answer) return;
  std::fprintf(stderr, "race_bench: %s does not start\n", label_.c_str());
  std::exit(1);
}

void RacedPreviewer::show(const std::string& path) const {
  const OwnedText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  call("ShowFile", g_variant_new("(ssb)", uri.get(), "x11:0", FALSE));
}

void RacedPreviewer::close() const { call("Close", nullptr); }

pid_t RacedPreviewer::process() const {
  const OwnedVariant answer(
      askBus("GetConnectionUnixProcessID", g_variant_new("(s)", kFilesPreviewerName)));
  guint32 id = 0;
  if (answer) g_variant_get(answer.get(), "(u)", &id);
  return static_cast<pid_t>(id);
}

void RacedPreviewer::stop() const {
  const pid_t started = process();
  if (started == 0) return;
  const auto tree = processTree(started);
  kill(started, SIGKILL);
  for (double waited = 0; waited < kLongestStop; waited += kStep) {
    bool isAnyThere = process() != 0;
    for (const TreeProcess& member : tree) isAnyThere = isAnyThere || kill(member.id, 0) == 0;
    if (!isAnyThere) return;
    wait(kStep);
  }
}

}  // namespace lumisk::bench
