#include <gtk/gtk.h>

#include <clocale>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "desktop/frame_memory.h"
#include "desktop/previewer.h"
#include "desktop/previewer_arguments.h"
#include "desktop/service/hand_over.h"
#include "desktop/snapshot.h"
#include "platform/argument_url.h"
#include "platform/terminal_text.h"

namespace {

using namespace lumisk::desktop;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

/// From where the program lies, so that it also runs from where it was built.
EngineFiles findEngineFiles() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const auto below = [&](const char* path) { return (program / path).lexically_normal().string(); };
  const std::string locale = below(LUMISK_LOCALE_PATH);
  return {below(LUMISK_EXTENSION_PATH), below(LUMISK_STORE_PATH),
          std::filesystem::is_directory(locale, error) ? locale : std::string()};
}

int complain(int status, std::string_view sentence) {
  std::fputs(lumisk::complaintLine(sentence).c_str(), stderr);
  return status;
}

/// Asked of the environment, not of the toolkit: whoever only hands over should not start it.
bool hasDisplay() {
  const auto isSet = [](const char* variable) {
    const char* value = g_getenv(variable);
    return value != nullptr && *value != '\0';
  };
  return isSet("WAYLAND_DISPLAY") || isSet("DISPLAY");
}

int run(const OpenRequest& request) {
  std::vector<std::string> uris;
  for (const std::string& path : request.paths) {
    const auto uri = lumisk::addressOfArgument(path);
    if (!uri)
      return complain(kExitUsage, "'" + path + "' is not the URI of a file on this machine");
    uris.push_back(*uri);
  }
  if (!hasDisplay())
    return complain(
        kExitFailure,
        "there is no display to open a window on; \"lumisk page FILE\" writes the page");
  return openInPreviewer(std::move(uris), findEngineFiles());
}

int run(const ServiceRequest&) { return servePreviewer(findEngineFiles()); }

int run(const ReloadBusRequest&) {
  reloadBus();
  return 0;
}

int run(const SnapshotRequest& request) {
  if (!lumisk::fileURLOfArgument(request.path))
    return complain(kExitUsage,
                    "what to take a picture of is not the URI of a file on this machine");
  if (gtk_init_check() == FALSE)
    return complain(kExitFailure,
                    "there is no display to draw on; \"xvfb-run lumisk snapshot\" brings its own");
  return takeSnapshot(request, findEngineFiles());
}

int run(const HelpRequest&) {
  std::puts(
      "Usage: lumisk-previewer [open] [--] PATH...\n"
      "       lumisk-previewer snapshot [OPTION]... PATH PICTURE\n"
      "       lumisk-previewer --gapplication-service\n"
      "       lumisk-previewer reload-bus\n"
      "\n"
      "The preview window. The command lumisk and the session bus start it; see \"lumisk "
      "--help\".");
  return 0;
}

int run(const WrongUsage& usage) { return complain(kExitUsage, usage.sentence); }

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): what nobody can answer for ends the program
int main(int argc, char** argv) {
  lumisk::desktop::keepFrameMemory();
  std::setlocale(LC_ALL, "");
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  return std::visit([](const auto& request) { return run(request); },
                    parsePreviewerArguments(words));
}
