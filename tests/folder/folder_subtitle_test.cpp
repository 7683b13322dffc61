#include "folder/folder_subtitle.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "folder_fixtures.h"
#include "support/fake_strings.h"

namespace lumisk {
namespace {

FolderState folderWith(std::int64_t total, std::int64_t hidden, std::optional<std::string> size,
                       std::optional<std::string> date) {
  return {.folderURL = FileURL::fromPath("/a/"),
          .totalCount = total,
          .hiddenCount = hidden,
          .folderSizeStr = std::move(size),
          .folderDateStr = std::move(date),
          .dateFormatter = nullptr};
}

TEST(FolderSubtitle, SaysWhatIsKnown) {
  struct Row {
    const char* label;
    std::int64_t total;
    std::int64_t hidden;
    std::optional<std::string> size;
    std::optional<std::string> date;
    const char* subtitle;
  };
  const std::optional<std::string> none;
  const std::vector<Row> rows = {
      {"nothing", 0, 0, none, none, ""},
      {"size and date of an empty folder", 0, 0, "0 B", "today", "0 B - Modified: today"},
      {"date", 0, 0, none, "today", "Modified: today"},
      {"size", 0, 0, "4 KB", none, "4 KB"},
      {"one item", 1, 0, none, none, "1 item"},
      {"items", 12, 0, none, none, "12 items"},
      {"hidden", 0, 3, none, none, "3 hidden"},
      {"counts", 12, 3, none, none, "12 items, 3 hidden"},
      {"counts and size", 12, 3, "4.0 MB", none, "12 items, 3 hidden, 4.0 MB"},
      {"counts and date", 12, 3, none, "today", "12 items, 3 hidden - Modified: today"},
      {"hidden and size", 0, 3, "4.0 MB", none, "3 hidden, 4.0 MB"},
      {"all", 12, 3, "4.0 MB", "today", "12 items, 3 hidden, 4.0 MB - Modified: today"},
      {"a big count", 4'294'967'297, 0, none, none, "4294967297 items"},
      {"a date with a percent sign", 0, 0, none, "%s %lld", "Modified: %s %lld"},
  };
  const test::ManualPlatform desktop;
  for (const Row& row : rows) {
    EXPECT_EQ(buildFolderSubtitle(folderWith(row.total, row.hidden, row.size, row.date),
                                  desktop.platform.strings),
              row.subtitle)
        << row.label;
  }
}

TEST(FolderSubtitle, AMissingTextShowsItsKey) {
  EXPECT_EQ(buildFolderSubtitle(folderWith(12, 3, "4 KB", "today"), test::FakeStrings()),
            "folder.items, folder.items.hidden, 4 KB - folder.modified");
}

}  // namespace
}  // namespace lumisk
