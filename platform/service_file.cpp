#include "platform/service_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <variant>

#include "core/utf8.h"
#include "platform/data_directories.h"
#include "platform/file_reading.h"

namespace lumisk {

namespace {

constexpr std::string_view kMark =
    "# Written by lumisk integrate; lumisk integrate --remove takes it away.\n";
constexpr std::string_view kGroup = "[D-BUS Service]\n";
/// Where packages put theirs, and what every bus of theirs is built with.
constexpr std::string_view kBusDataDirectory = "/usr/share";
/// Real ones have three lines.
constexpr off_t kLongestServiceFile = 65'536;

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }

// The bus splits the line into words as a shell does.
std::string quotedWord(std::string_view word) {
  std::string quoted = "'";
  for (const char c : word) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::string firstShellWord(std::string_view line) {
  std::string word;
  char quote = '\0';
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    if (quote != '\0') {
      if (c == quote) {
        quote = '\0';
      } else {
        word += c;
      }
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (c == '\\' && at + 1 < line.size()) {
      word += line[++at];
    } else if (c == ' ' || c == '\t') {
      break;
    } else {
      word += c;
    }
  }
  return word;
}

std::string programOf(std::string_view text) {
  constexpr std::string_view kExec = "Exec=";
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    if (line.starts_with(kExec)) return firstShellWord(line.substr(kExec.size()));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
  return {};
}

ServiceFile unreadable(int error) {
  return {.state = ServiceFile::State::Unreadable, .error = error};
}

ServiceFile describedBy(std::string_view text) {
  const bool isOurs = text.starts_with(kMark);
  return {.state = isOurs ? ServiceFile::State::Ours : ServiceFile::State::Foreign,
          .text = std::string(text),
          .program = programOf(text)};
}

}  // namespace

std::vector<std::string> serviceDataDirectories() {
  std::vector<std::string> directories = dataDirectories();
  const char* const session = std::getenv("XDG_RUNTIME_DIR");
  if (session != nullptr && *session == '/') directories.emplace(directories.begin(), session);
  if (std::find(directories.begin(), directories.end(), kBusDataDirectory) == directories.end()) {
    directories.emplace_back(kBusDataDirectory);
  }
  return directories;
}

std::string serviceFolderOf(std::string_view dataDirectory) {
  return std::string(dataDirectory) + "/dbus-1/services";
}

std::string serviceFilePath(std::string_view dataDirectory, std::string_view name) {
  return serviceFolderOf(dataDirectory) + "/" + std::string(name) + ".service";
}

std::optional<std::string> serviceFileText(std::string_view name, std::string_view program) {
  if (std::any_of(program.begin(), program.end(), isControl)) return std::nullopt;
  if (!isValidUtf8(program)) return std::nullopt;
  std::string text(kMark);
  text += kGroup;
  text += "Name=";
  text += name;
  text += "\nExec=" + quotedWord(program) + " --gapplication-service\n";
  return text;
}

bool ServiceFile::startsLumisk() const {
  return std::string_view(program).substr(program.rfind('/') + 1) == kPreviewerProgram;
}

ServiceFile readServiceFile(const std::string& path) {
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) {
    return errno == ENOENT || errno == ENOTDIR ? ServiceFile{} : unreadable(errno);
  }
  const bool isLink = S_ISLNK(status.st_mode);
  const bool isThere = !isLink || stat(path.c_str(), &status) == 0;
  if (!isThere || !S_ISREG(status.st_mode) || status.st_size > kLongestServiceFile) {
    return {.state = ServiceFile::State::Foreign};
  }
  const auto read = readFile(path);
  if (const auto* error = std::get_if<ErrorRecord>(&read)) return unreadable(error->code);
  ServiceFile file = describedBy(std::get<FileContents>(read).bytes());
  // Whoever made a link manages it; what it leads to still decides what the bus starts.
  if (isLink) file.state = ServiceFile::State::Foreign;
  return file;
}

bool isLumiskRegisteredFor(std::string_view name) {
  for (const std::string& directory : serviceDataDirectories()) {
    const ServiceFile file = readServiceFile(serviceFilePath(directory, name));
    if (file.state != ServiceFile::State::Absent) return file.startsLumisk();
  }
  return false;
}

}  // namespace lumisk
