#include "platform/headless/date_formatter.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "test_environment.h"

namespace lumisk {
namespace {

using test::ScopedVariable;

constexpr std::time_t kNovember2026 = 1795269900;  // 2026-11-21T14:05:00Z

std::string text(std::time_t seconds, const char* zone, const std::string& localeName = "C") {
  const ScopedVariable scope("TZ", zone);
  return HeadlessDateFormatter(localeName).stringFromDate({.tv_sec = seconds, .tv_nsec = 0});
}

TEST(HeadlessDateFormatter, CLocaleHasAnEnglishMediumDate) {
  EXPECT_EQ(text(kNovember2026, "UTC"), "21 Nov 2026, 14:05");
  EXPECT_EQ(text(kNovember2026, "UTC", "POSIX"), "21 Nov 2026, 14:05");
  EXPECT_EQ(text(kNovember2026, "UTC", "C.UTF-8"), "21 Nov 2026, 14:05");
}

TEST(HeadlessDateFormatter, UnknownLocaleIsTheCLocale) {
  EXPECT_EQ(text(kNovember2026, "UTC", "xx_XX.UTF-8"), "21 Nov 2026, 14:05");
}

TEST(HeadlessDateFormatter, DaysHaveNoLeadingZeroAndHoursHave) {
  EXPECT_EQ(text(kNovember2026 - 20 * 86400 - 9 * 3600, "UTC"), "1 Nov 2026, 05:05");
}

TEST(HeadlessDateFormatter, MomentsFarFromNow) {
  struct Row {
    const char* label;
    std::time_t seconds;
    const char* text;
  };
  const std::vector<Row> rows = {
      {"the epoch", 0, "1 Jan 1970, 00:00"},
      {"one second before it", -1, "31 Dec 1969, 23:59"},
      {"1900", -2208988800, "1 Jan 1900, 00:00"},
      {"the year 1", -62135596800, "1 Jan 1, 00:00"},
      {"the last signed 32-bit second", 2147483647, "19 Jan 2038, 03:14"},
      {"the first beyond", 2147483648, "19 Jan 2038, 03:14"},
      {"the last unsigned 32-bit second", 4294967295, "7 Feb 2106, 06:28"},
      {"the second beyond", 4294967296, "7 Feb 2106, 06:28"},
      {"2262", 9223372037, "11 Apr 2262, 23:47"},
      {"the year 10000", 253402300800, "1 Jan 10000, 00:00"},
  };
  for (const Row& row : rows) EXPECT_EQ(text(row.seconds, "UTC"), row.text) << row.label;
}

TEST(HeadlessDateFormatter, MomentsWithoutAYearAreSeconds) {
  constexpr std::time_t kLast = std::numeric_limits<std::time_t>::max();
  EXPECT_EQ(text(kLast, "UTC"), std::to_string(kLast));
  EXPECT_EQ(text(-kLast, "UTC"), std::to_string(-kLast));
}

TEST(HeadlessDateFormatter, FollowsTheTimeZone) {
  EXPECT_EQ(text(kNovember2026, "EST5EDT,M3.2.0,M11.1.0"), "21 Nov 2026, 09:05");
  EXPECT_EQ(text(kNovember2026, "<+1345>-13:45"), "22 Nov 2026, 03:50");
}

TEST(HeadlessDateFormatter, FractionsOfASecondAreNotSeen) {
  const ScopedVariable scope("TZ", "UTC");
  const HeadlessDateFormatter formatter("C");
  EXPECT_EQ(formatter.stringFromDate({.tv_sec = -60, .tv_nsec = 999'999'999}),
            "31 Dec 1969, 23:59");
}

TEST(MediumDateFormat, NamesTheMonthWhereDigitsAreAmbiguous) {
  struct Row {
    const char* label;
    const char* date;
    const char* time;
    const char* twelveHours;
    const char* format;
  };
  const std::vector<Row> rows = {
      {"POSIX", "%m/%d/%y", "%H:%M:%S", "%I:%M:%S %p", "%-d %b %Y, %H:%M"},
      {"en_US", "%m/%d/%Y", "%r", "%I:%M:%S %p", "%b %-d, %Y, %-I:%M %p"},
      {"fr_FR", "%d/%m/%Y", "%T", "", "%-d %b %Y, %H:%M"},
      {"hi_IN", "%-d/%-m/%y", "%I:%M:%S %p %Z", "%I:%M:%S %p %Z", "%-d %b %Y, %-I:%M %p"},
      {"tr_TR", "%d-%m-%Y", "%T", "%I:%M:%S %p", "%-d %b %Y, %H:%M"},
      {"de_DE", "%d.%m.%Y", "%T", "", "%d.%m.%Y, %H:%M"},
      {"two-digit year", "%d.%m.%y", "%T", "", "%d.%m.%Y, %H:%M"},
      {"sv_SE", "%Y-%m-%d", "%H:%M:%S", "", "%Y-%m-%d %H:%M"},
      {"ja_JP", "%Y年%m月%d日", "%H時%M分%S秒", "%p%I時%M分%S秒", "%Y年%m月%d日 %H:%M"},
      {"zh_HK", "%Y年%m月%d日 %A", "%p %I時%M分%S秒 %Z", "%p %I:%M:%S",
       "%Y年%m月%d日 %A %p %-I:%M"},
      {"ar_EG", "%d %b, %Y", "%Z %I:%M:%S %p", "%Z %I:%M:%S %p", "%d %b, %Y, %-I:%M %p"},
      {"fa_IR", "%Oy/%Om/%Od", "%OH:%OM:%OS", "", "%Oy/%Om/%Od %H:%M"},
      {"th_TH", "%d/%m/%Ey", "%H:%M:%S", "%I:%M:%S %p", "%d/%m/%Ey, %H:%M"},
      {"no forms at all", "", "", "", "%-d %b %Y, %H:%M"},
      {"no conversion", "?", "?", "", "?, %H:%M"},
      {"lone percent", "%", "%", "", "%, %H:%M"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(mediumDateFormat(row.date, row.time, row.twelveHours), row.format) << row.label;
  }
}

class HeadlessDateFormatterInLocales : public test::WithLocales {};

TEST_F(HeadlessDateFormatterInLocales, SpeaksTheLanguage) {
  EXPECT_EQ(text(kNovember2026, "UTC", "de_DE.UTF-8"), "21.11.2026, 14:05");
  EXPECT_EQ(text(kNovember2026, "UTC", "en_US.UTF-8"), "Nov 21, 2026, 2:05 PM");
  EXPECT_EQ(text(kNovember2026, "UTC", "ja_JP.UTF-8"), "2026年11月21日 14:05");
  EXPECT_EQ(text(kNovember2026, "UTC", "sv_SE.UTF-8"), "2026-11-21 14:05");
  EXPECT_EQ(text(kNovember2026, "UTC", "tr_TR.UTF-8"), "21 Kas 2026, 14:05");
}

TEST_F(HeadlessDateFormatterInLocales, FollowsTheEnvironment) {
  const ScopedVariable all("LC_ALL", nullptr);
  const ScopedVariable time("LC_TIME", "de_DE.UTF-8");
  const ScopedVariable lang("LANG", "en_US.UTF-8");
  EXPECT_EQ(text(kNovember2026, "UTC", ""), "21.11.2026, 14:05");
}

}  // namespace
}  // namespace lumisk
