#include "bench/desktop/previewer.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "bench/desktop/process_tree.h"
#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"

namespace lumisk::bench {
namespace {

using namespace desktop;

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr double kLongestStart = 20;  // seconds
constexpr double kStep = 0.005;       // seconds

GDBusConnection* sessionBus() {
  GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  if (bus != nullptr) return bus;
  std::fputs("desktop_bench: there is no session bus\n", stderr);
  std::exit(1);
}

void countEvent(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
                gpointer count) {
  ++*static_cast<int*>(count);
}

}  // namespace

void receiveWhatHasCome() {
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
}

void wait(double seconds) {
  g_usleep(static_cast<gulong>(seconds * G_USEC_PER_SEC));
  receiveWhatHasCome();
}

Previewer::Previewer()
    : bus_(sessionBus()),
      selectionSubscription_(g_dbus_connection_signal_subscribe(
          bus_, nullptr, kFilesInterface, "SelectionEvent", kFilesPreviewerPath, nullptr,
          G_DBUS_SIGNAL_FLAGS_NONE, countEvent, &selectionEvents_, nullptr)) {}

Previewer::~Previewer() {
  stop();
  g_dbus_connection_signal_unsubscribe(bus_, selectionSubscription_);
  g_object_unref(bus_);
}

void Previewer::start() {
  run("--gapplication-service", "");
  // The application's name is there a moment before its objects are; other callers use other names,
  // which are claimed last.
  for (double waited = 0; !visible() && waited < kLongestStart; waited += kStep) wait(kStep);
}

void Previewer::startWith(const std::string& path) { run("open", path); }

void Previewer::run(const char* option, const std::string& argument) {
  std::string program = LUMISK_PREVIEWER;
  std::string word = option;
  std::string path = argument;
  char* words[] = {program.data(), word.data(), path.empty() ? nullptr : path.data(), nullptr};
  ErrorSlot error;
  if (g_spawn_async(nullptr, words, nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, &error))
    return;
  std::fprintf(stderr, "desktop_bench: %s\n", error.message());
  std::exit(1);
}

void Previewer::stop() {
  const pid_t started = process();
  if (started == 0) return;
  const auto all = processTree(started);
  kill(started, SIGTERM);
  const auto isThere = [](const TreeProcess& member) { return kill(member.id, 0) == 0; };
  for (double waited = 0; waited < kLongestStart; waited += kStep) {
    bool isAnyThere = false;
    for (const TreeProcess& member : all) isAnyThere = isAnyThere || isThere(member);
    if (!isAnyThere) return;
    wait(kStep);
  }
}

void Previewer::call(const char* method, GVariant* arguments) const {
  g_dbus_connection_call(bus_, kApplicationId, kFilesPreviewerPath, kFilesInterface, method,
                         arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr,
                         nullptr);
  g_dbus_connection_flush_sync(bus_, nullptr, nullptr);
}

void Previewer::show(const std::string& path) {
  const OwnedText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  call("ShowFile", g_variant_new("(ssbs)", uri.get(), "", FALSE, ""));
}

void Previewer::close() { call("Close", nullptr); }

std::optional<bool> Previewer::visible() const {
  const OwnedVariant answer(g_dbus_connection_call_sync(
      bus_, kApplicationId, kFilesPreviewerPath, "org.freedesktop.DBus.Properties", "Get",
      g_variant_new("(ss)", kFilesInterface, "Visible"), G_VARIANT_TYPE("(v)"),
      G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr));
  if (!answer) return std::nullopt;
  GVariant* value = nullptr;
  g_variant_get(answer.get(), "(v)", &value);
  const OwnedVariant owned(value);
  return g_variant_get_boolean(value) != FALSE;
}

pid_t Previewer::process() const {
  const OwnedVariant answer(
      g_dbus_connection_call_sync(bus_, kBus, kBusPath, kBus, "GetConnectionUnixProcessID",
                                  g_variant_new("(s)", kApplicationId), G_VARIANT_TYPE("(u)"),
                                  G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  if (!answer) return 0;
  guint32 id = 0;
  g_variant_get(answer.get(), "(u)", &id);
  return static_cast<pid_t>(id);
}

}  // namespace lumisk::bench
