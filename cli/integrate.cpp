#include "cli/integrate.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/descriptor_output.h"
#include "cli/previewer_program.h"
#include "platform/atomic_file.h"
#include "platform/data_directories.h"
#include "platform/service_file.h"

namespace lumisk {

namespace {

using State = ServiceFile::State;

std::string reason(int error) { return std::generic_category().message(error); }

int say(const std::string& lines) {
  DescriptorOutput out(STDOUT_FILENO);
  out.append(lines);
  out.flush();
  return exitStatusOfWriting(out.error());
}

// Whether every file is ours to change; says which is not.
bool mayChange(const std::string& home) {
  bool mayAll = true;
  for (const std::string_view name : kPreviewerNames) {
    const std::string path = serviceFilePath(home, name);
    const ServiceFile file = readServiceFile(path);
    if (file.state == State::Foreign) {
      complain("'" + path + "' was not written by lumisk integrate and stays as it is; move it " +
               "away first");
    } else if (file.state == State::Unreadable) {
      complain("cannot read '" + path + "': " + reason(file.error));
    } else {
      continue;
    }
    mayAll = false;
  }
  return mayAll;
}

// A bus that is running may have looked before the files changed. Nothing is lost when there is no
// bus: the next one looks anew.
void tellTheBus(const std::string& program) {
  std::string path = program;
  std::string word = "reload-bus";
  char* const argv[] = {path.data(), word.data(), nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, path.c_str(), nullptr, nullptr, argv, environ) != 0) return;
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

int write(const std::string& home, const std::string& program) {
  std::string report;
  int status = kExitSuccess;
  for (const std::string_view name : kPreviewerNames) {
    const std::string path = serviceFilePath(home, name);
    if (const int error = writeFileAtomically(path, *serviceFileText(name, program)); error != 0) {
      complain("cannot write '" + path + "': " + reason(error));
      status = kExitFailure;
      break;
    }
    report += "wrote " + path + "\n";
  }
  // What was written counts from now on, all or not.
  if (!report.empty()) tellTheBus(program);
  if (status == kExitSuccess) report += "Lumisk is now the previewer. ";
  if (!report.empty()) report += "lumisk integrate --remove takes that back.\n";
  const int said = say(report);
  return status == kExitSuccess ? said : status;
}

int install(const std::string& home) {
  const std::optional<std::string> program = findPreviewer();
  if (!program) {
    complainOfNoPreviewer();
    return kExitFailure;
  }
  if (!serviceFileText(kPreviewerNames[0], *program)) {
    complain("the bus cannot start a program with such a path: '" + *program + "'");
    return kExitFailure;
  }
  if (!mayChange(home)) return kExitFailure;
  std::error_code folderError;
  std::filesystem::create_directories(serviceFolderOf(home), folderError);
  if (folderError) {
    complain("cannot make the folder '" + serviceFolderOf(home) + "': " + folderError.message());
    return kExitFailure;
  }
  return write(home, *program);
}

// Those that integrate makes where there are none; whatever else is in them keeps them.
void removeEmptyFolders(const std::string& home) {
  const std::string services = serviceFolderOf(home);
  if (rmdir(services.c_str()) == 0) rmdir(services.substr(0, services.rfind('/')).c_str());
}

int remove(const std::string& home) {
  int status = mayChange(home) ? kExitSuccess : kExitFailure;
  std::string report;
  for (const std::string_view name : kPreviewerNames) {
    const std::string path = serviceFilePath(home, name);
    if (readServiceFile(path).state != State::Ours) continue;
    if (unlink(path.c_str()) != 0) {
      complain("cannot remove '" + path + "': " + reason(errno));
      status = kExitFailure;
      continue;
    }
    report += "removed " + path + "\n";
  }
  if (!report.empty()) removeEmptyFolders(home);
  if (report.empty() && status == kExitSuccess) report = "There was nothing to remove.\n";
  if (const auto program = findPreviewer()) tellTheBus(*program);
  const int written = say(report);
  return status == kExitSuccess ? written : status;
}

std::string standing(std::string_view name, bool& isLumisk) {
  for (const std::string& directory : serviceDataDirectories()) {
    const std::string path = serviceFilePath(directory, name);
    const ServiceFile file = readServiceFile(path);
    if (file.state == State::Absent) continue;
    if (file.state == State::Unreadable) return "unknown: cannot read " + path;
    isLumisk = file.startsLumisk();
    const bool isThere = access(file.program.c_str(), X_OK) == 0;
    const std::string what = isLumisk ? "Lumisk" : "another previewer";
    isLumisk = isLumisk && isThere;
    std::string line = what + ", " + (file.program.empty() ? "no program" : file.program);
    if (!isThere) line += ", which is missing";
    return line.append(" (").append(path).append(")");
  }
  return "no previewer";
}

int tellStatus() {
  std::string report;
  bool isAll = true;
  for (const std::string_view name : kPreviewerNames) {
    bool isLumisk = false;
    report += std::string(name) + ": " + standing(name, isLumisk) + "\n";
    isAll = isAll && isLumisk;
  }
  const int written = say(report);
  return written != kExitSuccess || isAll ? written : kExitNotIntegrated;
}

}  // namespace

int runIntegrate(const Arguments& arguments) {
  if (arguments.integration == Integration::Status) return tellStatus();
  const std::optional<std::string> home = dataHome();
  if (!home) {
    complain("there is no home directory: neither XDG_DATA_HOME nor HOME is an absolute path");
    return kExitFailure;
  }
  return arguments.integration == Integration::Remove ? remove(*home) : install(*home);
}

}  // namespace lumisk
