#include "cli/page.h"

#include <unistd.h>

#include <optional>
#include <string>
#include <variant>

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/descriptor_output.h"
#include "core/json_page.h"
#include "core/markdown_page.h"
#include "core/source_page.h"
#include "core/table_page.h"
#include "platform/argument_url.h"
#include "platform/previewed_file.h"

namespace lumisk {

namespace {

bool hasModes(PreviewKind kind) { return kind == PreviewKind::Json || kind == PreviewKind::Jsonl; }

// JSON opens laid out, JSON Lines as it stands.
bool isFormatted(PreviewKind kind, std::optional<DocumentMode> mode) {
  return mode ? *mode == DocumentMode::Formatted : kind == PreviewKind::Json;
}

void writePage(Output& out, const FileURL& url, const PreviewedFile& file,
               const Arguments& arguments) {
  const bool isDark = arguments.isDark;
  switch (file.kind()) {
    case PreviewKind::Folder:  // not a file
      break;
    case PreviewKind::Markdown:
      writeMarkdownPage(out, file.text(), url.deletingLastPathComponent().absoluteString(), isDark);
      break;
    case PreviewKind::Table:
      writeTableHTML(out, file.text(), url, tableSeparator(file.extension()), isDark);
      break;
    case PreviewKind::Jsonl:
      writeJSONLHTML(out, file.text(), url, isDark, isFormatted(file.kind(), arguments.mode));
      break;
    case PreviewKind::Json:
      writeJSONHTML(out, file.text(), url, isDark, isFormatted(file.kind(), arguments.mode));
      break;
    case PreviewKind::Code:
      writeSourceHTML(out, file.text(), url, file.extension(), isDark);
      break;
  }
}

int failPreview(const std::string& path, const ErrorRecord& error) {
  DescriptorOutput out(STDOUT_FILENO);
  out.append("Failed to load and parse file: " + error.description() + "\n");
  out.flush();
  complain("cannot show '" + path + "': " + error.localizedDescription);
  return kExitFailure;
}

}  // namespace

int runPage(const Arguments& arguments) {
  const std::optional<FileURL> url = fileURLOfArgument(arguments.path());
  if (!url) {
    complain("'" + arguments.path() + "' is not the URI of a file on this machine");
    return kExitUsage;
  }
  if (isExistingDirectory(url->path())) {
    complain("'" + arguments.path() + "' is a folder; only files have a page");
    return kExitFailure;
  }
  if (arguments.mode && !hasModes(previewKindOf(*url))) {
    complain("--mode is for JSON and JSON Lines, which '" + arguments.path() + "' is not");
    return kExitUsage;
  }
  auto loaded = PreviewedFile::load(*url);
  if (const auto* error = std::get_if<ErrorRecord>(&loaded)) {
    return failPreview(arguments.path(), *error);
  }
  DescriptorOutput out(STDOUT_FILENO);
  writePage(out, *url, std::get<PreviewedFile>(loaded), arguments);
  out.flush();
  return exitStatusOfWriting(out.error());
}

}  // namespace lumisk
