#include "core/preview_kind.h"

#include <gtest/gtest.h>

#include "core/error_record.h"

namespace lumisk {
namespace {

TEST(PreviewKind, OfEachExtension) {
  struct Row {
    const char* extension;
    PreviewKind kind;
  };
  const Row rows[] = {
      {"md", PreviewKind::Markdown}, {"markdown", PreviewKind::Markdown},
      {"csv", PreviewKind::Table},   {"tsv", PreviewKind::Table},
      {"jsonl", PreviewKind::Jsonl}, {"json", PreviewKind::Json},
      {"", PreviewKind::Code},       {"mdown", PreviewKind::Code},
      {"txt", PreviewKind::Code},    {"json5", PreviewKind::Code},
      {"ndjson", PreviewKind::Code}, {"m", PreviewKind::Code},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(previewKindOfFile(row.extension), row.kind) << row.extension;
  }
}

TEST(PreviewKind, OnlyTabSeparatedFilesAreCutAtTabs) {
  EXPECT_EQ(tableSeparator("tsv"), "\t");
  EXPECT_EQ(tableSeparator("csv"), ",");
}

TEST(ErrorRecord, OfUndecodableTextNamesTheKind) {
  const auto row = [](PreviewKind kind) { return undecodableTextError(kind); };
  EXPECT_EQ(row(PreviewKind::Markdown),
            (ErrorRecord{"Lumisk", 1, "Failed to read Markdown file as UTF8 text."}));
  EXPECT_EQ(row(PreviewKind::Table),
            (ErrorRecord{"Lumisk", 2, "Failed to read CSV file as UTF8 text."}));
  EXPECT_EQ(row(PreviewKind::Jsonl),
            (ErrorRecord{"Lumisk", 3, "Failed to read JSONL file as UTF8 text."}));
  EXPECT_EQ(row(PreviewKind::Json),
            (ErrorRecord{"Lumisk", 4, "Failed to read JSON file as UTF8 text."}));
  EXPECT_EQ(row(PreviewKind::Code), (ErrorRecord{"Lumisk", 1, "Failed to read file as text."}));
}

TEST(ErrorRecord, DescriptionCarriesEverything) {
  EXPECT_EQ(undecodableTextError(PreviewKind::Code).description(),
            "Error Domain=Lumisk Code=1 \"Failed to read file as text.\" "
            "UserInfo={NSLocalizedDescription=Failed to read file as text.}");
}

}  // namespace
}  // namespace lumisk
