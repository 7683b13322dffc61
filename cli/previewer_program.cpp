#include "cli/previewer_program.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "cli/command.h"
#include "platform/service_file.h"

namespace lumisk {

namespace {

bool isProgram(const std::string& path) { return access(path.c_str(), X_OK) == 0; }

std::optional<std::string> besideThisCommand() {
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return std::nullopt;
  const auto folder = self.parent_path() / LUMISK_LIBEXEC_FROM_BIN;
  return (folder / kPreviewerProgram).lexically_normal().string();
}

}  // namespace

std::optional<std::string> findPreviewer() {
  std::optional<std::string> beside = besideThisCommand();
  if (beside && isProgram(*beside)) return beside;
  std::string installed = LUMISK_LIBEXEC "/" + std::string(kPreviewerProgram);
  if (isProgram(installed)) return installed;
  return std::nullopt;
}

void complainOfNoPreviewer() {
  complain("the preview window is not installed (" LUMISK_LIBEXEC "/" +
           std::string(kPreviewerProgram) + "); lumisk page writes a page without it");
}

}  // namespace lumisk
