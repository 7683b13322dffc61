#include "core/preview_kind.h"

namespace lumisk {

namespace {

struct KindOfExtension {
  std::string_view extension;
  PreviewKind kind;
};

// In order of precedence; a new kind is a row here and a builder of its own.
constexpr KindOfExtension kKinds[] = {
    {"md", PreviewKind::Markdown}, {"markdown", PreviewKind::Markdown}, {"csv", PreviewKind::Table},
    {"tsv", PreviewKind::Table},   {"jsonl", PreviewKind::Jsonl},       {"json", PreviewKind::Json},
};

}  // namespace

PreviewKind previewKindOfFile(std::string_view lowercasedExtension) {
  for (const KindOfExtension& row : kKinds) {
    if (row.extension == lowercasedExtension) return row.kind;
  }
  return PreviewKind::Code;
}

std::string_view tableSeparator(std::string_view lowercasedExtension) {
  return lowercasedExtension == "tsv" ? "\t" : ",";
}

}  // namespace lumisk
