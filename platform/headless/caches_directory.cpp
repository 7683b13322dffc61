#include "platform/headless/caches_directory.h"

#include <cstdlib>

namespace lumisk {
namespace {

/// The variable's value if it is an absolute path, without slashes at its end.
std::optional<std::string> absolutePathIn(const char* variable) {
  const char* value = std::getenv(variable);
  if (value == nullptr || value[0] != '/') return std::nullopt;
  std::string path(value);
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

std::optional<std::string> XdgCachesDirectory::path() const {
  if (auto caches = absolutePathIn("XDG_CACHE_HOME")) return caches;
  const auto home = absolutePathIn("HOME");
  if (!home) return std::nullopt;
  return (*home == "/" ? std::string() : *home) + "/.cache";
}

}  // namespace lumisk
