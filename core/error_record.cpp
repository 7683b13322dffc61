#include "core/error_record.h"

namespace lumisk {

std::string ErrorRecord::description() const {
  return "Error Domain=" + domain + " Code=" + std::to_string(code) + " \"" + localizedDescription +
         "\" UserInfo={NSLocalizedDescription=" + localizedDescription + "}";
}

ErrorRecord undecodableTextError(PreviewKind kind) {
  switch (kind) {
    case PreviewKind::Markdown:
      return {kLumiskErrorDomain, 1, "Failed to read Markdown file as UTF8 text."};
    case PreviewKind::Table:
      return {kLumiskErrorDomain, 2, "Failed to read CSV file as UTF8 text."};
    case PreviewKind::Jsonl:
      return {kLumiskErrorDomain, 3, "Failed to read JSONL file as UTF8 text."};
    case PreviewKind::Json:
      return {kLumiskErrorDomain, 4, "Failed to read JSON file as UTF8 text."};
    case PreviewKind::Folder:  // never decoded
    case PreviewKind::Code:
      break;
  }
  // Shares its code with Markdown: hosts tell the two apart by the text.
  return {kLumiskErrorDomain, 1, "Failed to read file as text."};
}

}  // namespace lumisk
