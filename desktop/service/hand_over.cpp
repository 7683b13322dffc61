#include "desktop/service/hand_over.h"

#include <gio/gio.h>
#include <unistd.h>

#include <fstream>
#include <string_view>

#include "core/utf8.h"
#include "desktop/gref.h"
#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"

namespace lumisk::desktop {

namespace {

constexpr const char* kApplicationPath = "/org/lumisk/Previewer";
constexpr unsigned kLongestStartInMilliseconds = 20'000;

// The environment that the program was started with: where the toolkit is linked, it has taken the
// tokens out of the present one before `main`.
std::string variableAtStart(std::string_view name) {
  std::ifstream environment("/proc/self/environ");
  for (std::string entry; std::getline(environment, entry, '\0');) {
    if (entry.starts_with(name) && entry.substr(name.size(), 1) == "=")
      return entry.substr(name.size() + 1);
  }
  return {};
}

// What the compositor gave the program that a person started: shows that the window is wanted.
std::string activationToken() {
  const std::string token = variableAtStart("XDG_ACTIVATION_TOKEN");
  return token.empty() ? variableAtStart("DESKTOP_STARTUP_ID") : token;
}

GVariant* openArguments(const std::vector<std::string>& uris) {
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
  for (const std::string& uri : uris) g_variant_builder_add(&list, "s", uri.c_str());
  GVariantBuilder hints;
  g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
  const std::string token = activationToken();
  // A message of the bus holds text alone.
  if (!token.empty() && isValidUtf8(token)) {
    for (const char* hint : {"activation-token", "desktop-startup-id"})
      g_variant_builder_add(&hints, "{sv}", hint, g_variant_new_string(token.c_str()));
  }
  return g_variant_new("(asa{sv})", &list, &hints);
}

bool callOpen(GDBusConnection* connection, const std::vector<std::string>& uris, GError** error) {
  const OwnedVariant answer(g_dbus_connection_call_sync(
      connection, kApplicationId, kApplicationPath, "org.freedesktop.Application", "Open",
      openArguments(uris), nullptr, G_DBUS_CALL_FLAGS_NONE, kLongestStartInMilliseconds, nullptr,
      error));
  return answer != nullptr;
}

/// A previewer started directly, until it answers to its name or has ended.
class StartedPreviewer {
 public:
  explicit StartedPreviewer(GDBusConnection* connection) : connection_(connection) {}
  StartedPreviewer(const StartedPreviewer&) = delete;
  StartedPreviewer& operator=(const StartedPreviewer&) = delete;
  ~StartedPreviewer() {
    if (nameWatch_ != 0) g_bus_unwatch_name(nameWatch_);
    if (childWatch_ != 0) g_source_remove(childWatch_);
  }

  /// Whether a previewer has the name now.
  bool start(GError** error) {
    if (!spawn(error)) return false;
    nameWatch_ =
        g_bus_watch_name_on_connection(connection_, kApplicationId, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                       &StartedPreviewer::appeared, nullptr, this, nullptr);
    Deferred limit;
    limit.after(kLongestStartInMilliseconds, [this] { isOver_ = true; });
    while (!isThere_ && !isOver_) g_main_context_iteration(nullptr, TRUE);
    if (!isThere_) {
      g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "the previewer did not start");
    }
    return isThere_;
  }

 private:
  bool spawn(GError** error) {
    const OwnedText program(g_file_read_link("/proc/self/exe", error));
    if (!program) return false;
    OwnedText option(g_strdup("--gapplication-service"));
    char* words[] = {program.get(), option.get(), nullptr};
    constexpr auto kFlags = static_cast<GSpawnFlags>(
        G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    // A session of its own: closing the terminal must not take the window along.
    const auto detach = [](gpointer) { setsid(); };
    GPid child = 0;
    if (g_spawn_async("/", words, nullptr, kFlags, detach, nullptr, &child, error) == FALSE) {
      return false;
    }
    childWatch_ = g_child_watch_add(child, &StartedPreviewer::ended, this);
    return true;
  }

  static void appeared(GDBusConnection*, const char*, const char*, gpointer self) {
    static_cast<StartedPreviewer*>(self)->isThere_ = true;
  }
  static void ended(GPid, gint, gpointer self) {
    auto* const started = static_cast<StartedPreviewer*>(self);
    started->childWatch_ = 0;
    started->isOver_ = true;
  }

  GDBusConnection* connection_;
  guint nameWatch_ = 0;
  guint childWatch_ = 0;
  bool isThere_ = false;
  bool isOver_ = false;
};

HandOver failed(const ErrorSlot& error) {
  g_printerr("lumisk: cannot open the preview window: %s\n", error.message());
  return HandOver::Failed;
}

}  // namespace

HandOver handOver(const std::vector<std::string>& uris) {
  const auto connection =
      GRef<GDBusConnection>::adopt(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!connection) return HandOver::NoBus;
  // The bus may not know how to start it, or may know no display; this process does.
  if (callOpen(connection.get(), uris, nullptr)) return HandOver::Done;
  ErrorSlot error;
  StartedPreviewer previewer(connection.get());
  if (!previewer.start(&error) || !callOpen(connection.get(), uris, &error)) return failed(error);
  return HandOver::Done;
}

void reloadBus() {
  const auto connection =
      GRef<GDBusConnection>::adopt(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!connection) return;
  const OwnedVariant answer(g_dbus_connection_call_sync(
      connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "ReloadConfig", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

}  // namespace lumisk::desktop
