#include "cli/command.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "cli/arguments.h"
#include "cli/describe.h"
#include "cli/descriptor_output.h"
#include "cli/integrate.h"
#include "cli/open.h"
#include "cli/page.h"
#include "platform/terminal_text.h"

namespace lumisk {

namespace {

int print(std::string_view text) {
  DescriptorOutput out(STDOUT_FILENO);
  out.append(text);
  out.flush();
  return exitStatusOfWriting(out.error());
}

}  // namespace

int runCommand(const std::vector<std::string_view>& words) {
  const auto parsed = parseArguments(words);
  if (const auto* error = std::get_if<UsageError>(&parsed)) {
    complain(error->message + "; see lumisk --help");
    return kExitUsage;
  }
  const auto& arguments = std::get<Arguments>(parsed);
  switch (arguments.subcommand) {
    case Subcommand::Help:
      return print(kHelpText);
    case Subcommand::Version:
      return print("lumisk " LUMISK_VERSION "\n");
    case Subcommand::Page:
      return runPage(arguments);
    case Subcommand::Describe:
      return runDescribe(arguments);
    case Subcommand::Open:
      return runOpen(arguments);
    case Subcommand::Snapshot:
      return runSnapshot(arguments);
    case Subcommand::Integrate:
      return runIntegrate(arguments);
  }
  return kExitUsage;
}

void complain(std::string_view sentence) {
  DescriptorOutput out(STDERR_FILENO);
  out.append(complaintLine(sentence));
  out.flush();
}

int exitStatusOfWriting(int error) {
  if (error == 0 || error == EPIPE) return kExitSuccess;
  complain("cannot write to standard output: " + std::generic_category().message(error));
  return kExitFailure;
}

}  // namespace lumisk
