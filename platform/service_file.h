#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumisk {

// The files that tell the session bus which program answers to a name:
// <data directory>/dbus-1/services/<name>.service. The person's own folder comes before the
// system's, so a file there takes a name over without touching any package.

/// The names under which file managers call their previewer.
inline constexpr std::array<std::string_view, 2> kPreviewerNames = {"org.gnome.NautilusPreviewer",
                                                                    "org.nemo.Preview"};

/// The base name of the program that answers.
inline constexpr std::string_view kPreviewerProgram = "lumisk-previewer";

/// The data directories in which the bus looks for these files, in the order of dbus-daemon(1):
/// $XDG_RUNTIME_DIR, whose files go when the person logs out, then `dataDirectories`, and always
/// the one that the bus was built with, which $XDG_DATA_DIRS may leave out.
std::vector<std::string> serviceDataDirectories();

std::string serviceFolderOf(std::string_view dataDirectory);
std::string serviceFilePath(std::string_view dataDirectory, std::string_view name);

/// The file that has `program` (a path) started for `name`. Nothing when the path cannot stand in
/// such a file: it must be UTF-8 without control characters.
std::optional<std::string> serviceFileText(std::string_view name, std::string_view program);

/// What stands at the place of a service file.
struct ServiceFile {
  enum class State {
    Absent,
    Ours,        ///< it carries our mark: we wrote it, and may overwrite it or take it away
    Foreign,     ///< anything else, links and folders included
    Unreadable,  ///< nobody knows
  };

  State state = State::Absent;
  std::string text = {};
  /// The program that it has started, as a path; empty when it names none.
  std::string program = {};
  int error = 0;  ///< the errno with Unreadable

  bool startsLumisk() const;
};

ServiceFile readServiceFile(const std::string& path);

/// Whether a session bus of the usual set-up starts Lumisk for `name`: the first of
/// `serviceDataDirectories` that says anything about it decides.
bool isLumiskRegisteredFor(std::string_view name);

}  // namespace lumisk
