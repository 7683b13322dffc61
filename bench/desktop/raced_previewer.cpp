#include "bench/desktop/raced_previewer.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

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

[[noreturn]] void giveUp(const char* what) {
  std::fprintf(stderr, "race_bench: %s\n", what);
  std::exit(1);
}

std::filesystem::path serviceFolder(const std::string& command) {
  std::string pattern = (std::filesystem::temp_directory_path() / "race-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) giveUp("no folder for the service file");
  const std::filesystem::path folder = pattern;
  std::ofstream(folder / (std::string(kFilesPreviewerName) + ".service"))
      << "[D-BUS Service]\nName=" << kFilesPreviewerName << "\nExec=" << command << "\n";
  return folder;
}

std::filesystem::path busConfiguration(const std::filesystem::path& services) {
  std::filesystem::path file = services / "bus.conf";
  std::ofstream(file) << "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                      << "<servicedir>" << services.string() << "</servicedir>"
                      << "<policy context=\"default\"><allow send_destination=\"*\"/>"
                      << "<allow receive_sender=\"*\"/>"
                      << "<allow own=\"*\"/></policy></busconfig>\n";
  return file;
}

/// In the new process: however this program ends, the bus ends with it, and with the bus all that
/// it has started.
void endWithParent(gpointer) { prctl(PR_SET_PDEATHSIG, SIGKILL); }

}  // namespace

RacedPreviewer::RacedPreviewer(const std::string& label, const std::string& command)
    : label_(label), services_(serviceFolder(command)) {
  constexpr auto kFlags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  ErrorSlot error;
  connection_ =
      g_dbus_connection_new_for_address_sync(startBus().c_str(), kFlags, nullptr, nullptr, &error);
  if (connection_ == nullptr) giveUp(error.message());
}

std::string RacedPreviewer::startBus() {
  std::string configuration = "--config-file=" + busConfiguration(services_).string();
  std::string words[] = {"dbus-daemon", "--nofork", "--print-address", std::move(configuration)};
  char* argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
  constexpr auto kFlags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD);
  ErrorSlot error;
  int written = -1;
  if (g_spawn_async_with_pipes(nullptr, argv, nullptr, kFlags, endWithParent, nullptr, &bus_,
                               nullptr, &written, nullptr, &error) == FALSE)
    giveUp(error.message());
  std::string address;
  char next = 0;
  while (read(written, &next, 1) == 1 && next != '\n') address += next;
  ::close(written);
  return address;
}

RacedPreviewer::~RacedPreviewer() {
  stop();
  g_dbus_connection_close_sync(connection_, nullptr, nullptr);
  g_object_unref(connection_);
  kill(bus_, SIGTERM);
  waitpid(bus_, nullptr, 0);
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
  if (!answer) giveUp((label_ + " does not start").c_str());
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
