#include "cli/open.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/previewer_program.h"
#include "platform/argument_url.h"

namespace lumisk {

namespace {

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool hasDisplay() { return isSet("WAYLAND_DISPLAY") || isSet("DISPLAY"); }

int complainOfForeignFile(const std::string& argument) {
  complain("'" + argument + "' is not the URI of a file on this machine");
  return kExitUsage;
}

/// The address to hand over, or the exit status after having said what is wrong with it.
std::variant<std::string, int> addressOf(const std::string& argument) {
  const std::optional<std::string> address = addressOfArgument(argument);
  if (!address) return complainOfForeignFile(argument);
  if (isAddressOfAnotherKind(argument)) return *address;
  struct stat status = {};
  if (stat(fileURLOfArgument(argument)->path().c_str(), &status) != 0) {
    complain("cannot show '" + argument + "': " + std::generic_category().message(errno));
    return kExitFailure;
  }
  return *address;
}

int becomePreviewer(const std::string& program, const char* command,
                    const std::vector<std::string>& rest) {
  std::vector<std::string> words = {program, command};
  words.insert(words.end(), rest.begin(), rest.end());
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  execv(program.c_str(), argv.data());
  complain("cannot start '" + program + "': " + std::generic_category().message(errno));
  return kExitFailure;
}

int runInPreviewer(const char* command, const std::vector<std::string>& rest) {
  const std::optional<std::string> program = findPreviewer();
  if (program) return becomePreviewer(*program, command, rest);
  complainOfNoPreviewer();
  return kExitFailure;
}

}  // namespace

int runOpen(const Arguments& arguments) {
  std::vector<std::string> addresses;
  for (const std::string& path : arguments.paths) {
    auto address = addressOf(path);
    if (const int* status = std::get_if<int>(&address)) return *status;
    addresses.push_back(std::get<std::string>(std::move(address)));
  }
  if (hasDisplay()) return runInPreviewer("open", addresses);
  complain("there is no display to show it on; lumisk page writes the page of a file");
  return kExitFailure;
}

// Whether there is a display is asked after the words were read.
int runSnapshot(const Arguments& arguments) { return runInPreviewer("snapshot", arguments.paths); }

}  // namespace lumisk
