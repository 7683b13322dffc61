#include "platform/argument_url.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/utf8.h"

namespace lumisk {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isSchemeCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

}  // namespace

std::optional<FileURL> fileURLOfArgument(std::string_view argument) {
  if (FileURL::hasFileScheme(argument)) return FileURL::fromString(argument);
  // A current directory that was removed has no path; what is relative to it does not exist.
  std::error_code removed;
  const std::string current = std::filesystem::current_path(removed).string();
  return FileURL::fromPath(argument, removed ? "/" : current);
}

bool isAddressOfAnotherKind(const std::string& argument) {
  if (FileURL::hasFileScheme(argument) || argument.empty() || !isLetter(argument.front())) {
    return false;
  }
  const auto end = std::find_if_not(argument.begin(), argument.end(), isSchemeCharacter);
  const auto length = static_cast<std::size_t>(end - argument.begin());
  return argument.compare(length, 2, ":/") == 0 && access(argument.c_str(), F_OK) != 0;
}

std::optional<std::string> addressOfArgument(const std::string& argument) {
  if (isAddressOfAnotherKind(argument)) {
    return isValidUtf8(argument) ? std::optional(argument) : std::nullopt;
  }
  const std::optional<FileURL> url = fileURLOfArgument(argument);
  if (!url) return std::nullopt;
  return url->absoluteString();
}

}  // namespace lumisk
