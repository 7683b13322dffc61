#include "platform/argument_url.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace lumisk {

std::optional<FileURL> fileURLOfArgument(std::string_view argument) {
  if (FileURL::hasFileScheme(argument)) return FileURL::fromString(argument);
  // A current directory that was removed has no path; what is relative to it does not exist.
  std::error_code removed;
  const std::string current = std::filesystem::current_path(removed).string();
  return FileURL::fromPath(argument, removed ? "/" : current);
}

}  // namespace lumisk
