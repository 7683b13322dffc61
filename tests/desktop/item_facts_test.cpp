#include "desktop/item_facts.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "desktop/gtk_platform.h"
#include "support/files.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kPosix = "POSIX";

struct Row {
  const char* label;
  ErrorRecord error;
  ItemFacts facts;
  const char* sentence;
};

ItemFacts factsOf(const char* contentType, const char* kind) {
  ItemFacts facts;
  facts.contentType = contentType;
  facts.kind = kind;
  return facts;
}

ErrorRecord errorOf(std::string_view domain, int code, const char* description = "") {
  ErrorRecord error;
  error.domain = domain;
  error.code = code;
  error.localizedDescription = description;
  return error;
}

TEST(FailureSentence, SaysWhyThereIsNoPreview) {
  const Row rows[] = {
      {"a picture", errorOf(kLumiskErrorDomain, 1), factsOf("image/png", "PNG image"),
       "Files of the kind “PNG image” have no preview."},
      {"a text in another encoding", errorOf(kLumiskErrorDomain, 1),
       factsOf("text/markdown", "Markdown document"), "This file cannot be read as text."},
      {"of no known kind", errorOf(kLumiskErrorDomain, 1),
       factsOf("application/octet-stream", "Unknown"), "This file cannot be read as text."},
      {"of no kind at all",
       errorOf(kLumiskErrorDomain, 1),
       {},
       "This file cannot be read as text."},
      {"a code of ours is no errno",
       errorOf(kLumiskErrorDomain, ENOENT),
       {},
       "This file cannot be read as text."},
      {"gone", errorOf(kPosix, ENOENT), {}, "This item is no longer there."},
      {"not allowed", errorOf(kPosix, EACCES), factsOf("text/plain", "Text"),
       "You are not allowed to read this item."},
      {"not permitted", errorOf(kPosix, EPERM), factsOf("text/plain", "Text"),
       "You are not allowed to read this item."},
      {"a pipe", errorOf(kPosix, ENOTSUP, "Operation not supported"), factsOf("inode/fifo", "Pipe"),
       "Files of the kind “Pipe” have no preview."},
      {"a pipe of no known kind",
       errorOf(kPosix, ENOTSUP, "Operation not supported"),
       {},
       "This item cannot be read: Operation not supported"},
      {"a bad disk", errorOf(kPosix, EIO, "Input/output error"), factsOf("text/plain", "Text"),
       "This item cannot be read: Input/output error"},
      {"what the system says stays on its line",
       errorOf(kPosix, EIO, "two\nlines"),
       {},
       "This item cannot be read: two⏎lines"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(failureSentence(row.error, row.facts), row.sentence) << row.label;
}

TEST(ItemFacts, TellWhatTakesLongToRead) {
  const test::TemporaryFolder folder;
  const GtkPlatform platform("");
  const auto isLarge = [&](const char* name) {
    const FileURL url = FileURL::fromPath((folder / name).string());
    return readItemFacts(url, platform.platform()).isLarge;
  };
  test::writeAll(folder / "file", "");
  std::filesystem::create_directory(folder / "few");
  test::makeLargeFolder(folder / "many");
  EXPECT_FALSE(isLarge("file"));
  EXPECT_FALSE(isLarge("few"));
  EXPECT_TRUE(isLarge("many"));
  EXPECT_FALSE(isLarge("missing"));
  std::filesystem::resize_file(folder / "file", (2 << 20) - 1);
  EXPECT_FALSE(isLarge("file"));
  std::filesystem::resize_file(folder / "file", 2 << 20);
  EXPECT_TRUE(isLarge("file"));
}

}  // namespace
}  // namespace lumisk::desktop
