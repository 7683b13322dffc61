#include "platform/data_directories.h"

#include <cstdlib>
#include <string_view>

namespace lumisk {

namespace {

bool isAbsolute(std::string_view path) { return path.starts_with('/'); }

std::string_view environmentValue(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

std::optional<std::string> dataHome() {
  const std::string_view stated = environmentValue("XDG_DATA_HOME");
  if (isAbsolute(stated)) return std::string(stated);
  const std::string_view home = environmentValue("HOME");
  if (!isAbsolute(home)) return std::nullopt;
  return std::string(home) + "/.local/share";
}

std::vector<std::string> dataDirectories() {
  std::vector<std::string> directories;
  if (std::optional<std::string> home = dataHome()) directories.push_back(*std::move(home));
  std::string_view rest = environmentValue("XDG_DATA_DIRS");
  if (rest.empty()) rest = "/usr/local/share:/usr/share";
  while (!rest.empty()) {
    const std::string_view directory = rest.substr(0, rest.find(':'));
    rest.remove_prefix(directory.size() < rest.size() ? directory.size() + 1 : rest.size());
    if (isAbsolute(directory)) directories.emplace_back(directory);
  }
  return directories;
}

}  // namespace lumisk
