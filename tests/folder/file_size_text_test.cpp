#include "folder/file_size_text.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace lumisk {
namespace {

constexpr std::int64_t kKilobyte = 1024;
constexpr std::int64_t kMegabyte = 1024 * kKilobyte;
constexpr std::int64_t kGigabyte = 1024 * kMegabyte;

TEST(FolderFormatFileSize, UnitsAndRounding) {
  struct Row {
    std::int64_t bytes;
    const char* text;
  };
  const std::vector<Row> rows = {
      {0, "0 B"},
      {1, "1 B"},
      {1023, "1023 B"},
      {1024, "1 KB"},
      {1535, "1 KB"},
      {1536, "2 KB"},  // 1.5, and ties go to the even number
      {2560, "2 KB"},  // 2.5
      {2561, "3 KB"},
      {4096, "4 KB"},
      {kMegabyte - 1, "1024 KB"},
      {kMegabyte, "1.0 MB"},
      {1'500'000, "1.4 MB"},
      {kMegabyte + kMegabyte / 4, "1.2 MB"},      // 1.25
      {kMegabyte + 3 * kMegabyte / 4, "1.8 MB"},  // 1.75
      {kGigabyte - 1, "1024.0 MB"},
      {kGigabyte, "1.0 GB"},
      {1'610'612'736, "1.5 GB"},
      {4 * kGigabyte + 1, "4.0 GB"},
      {2048 * kGigabyte, "2048.0 GB"},
      {std::numeric_limits<std::int64_t>::max(), "8589934592.0 GB"},
      {-1, "-1 B"},
      {-1024, "-1024 B"},
      {-kGigabyte, "-1073741824 B"},
      {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808 B"},
  };
  for (const Row& row : rows) EXPECT_EQ(formatFileSize(row.bytes), row.text) << row.bytes;
}

/// The same by printf, in the C locale.
std::string byPrintf(std::int64_t bytes) {
  const double number = static_cast<double>(bytes);
  std::array<char, 64> text;
  if (number >= kGigabyte) {
    std::snprintf(text.data(), text.size(), "%.1f GB", number / kGigabyte);
  } else if (number >= kMegabyte) {
    std::snprintf(text.data(), text.size(), "%.1f MB", number / kMegabyte);
  } else if (number >= kKilobyte) {
    std::snprintf(text.data(), text.size(), "%.0f KB", number / kKilobyte);
  } else {
    std::snprintf(text.data(), text.size(), "%lld B", static_cast<long long>(bytes));
  }
  return text.data();
}

TEST(FolderFormatFileSize, EveryCountUpToFourMegabytesIsRoundedAsPrintfDoes) {
  for (std::int64_t bytes = -2000; bytes < 4 * kMegabyte; bytes += bytes < 20'000 ? 1 : 37) {
    ASSERT_EQ(formatFileSize(bytes), byPrintf(bytes)) << bytes;
  }
}

TEST(FolderFormatFileSize, AroundEveryPowerOfTwo) {
  for (int power = 0; power < 63; ++power) {
    for (std::int64_t around = -3; around <= 3; ++around) {
      const std::int64_t bytes = (std::int64_t{1} << power) + around;
      ASSERT_EQ(formatFileSize(bytes), byPrintf(bytes)) << bytes;
    }
  }
}

}  // namespace
}  // namespace lumisk
