// The language's own order and dates, each by the person's setting for it.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include <clocale>
#include <random>
#include <string>
#include <string_view>

#include "desktop/gtk_platform.h"

namespace lumisk::desktop {
namespace {

constexpr std::time_t kDate = 1795269900;  // 2026-11-21 14:05 UTC

/// A person's settings, as the environment has them. No locale need be there: ICU has its own.
class IcuPlatform : public testing::Test {
 protected:
  IcuPlatform() {
    std::setlocale(LC_ALL, "C");
    for (const char* name : {"LC_ALL", "LC_TIME", "LC_COLLATE", "LC_MESSAGES", "LANG"})
      unsetenv(name);
    setZone("UTC");
  }
  static void setZone(const char* zone) {
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(zone));
  }
  static std::string date(std::time_t seconds) {
    std::string text = makeIcuDateFormatter()->stringFromDate({seconds, 0});
    // Some versions of the locale data have a narrow blank before "PM".
    constexpr std::string_view kNarrowBlank = "\u202F";
    const std::size_t at = text.find(kNarrowBlank);
    return at == std::string::npos ? text : text.replace(at, kNarrowBlank.size(), " ");
  }
  static bool isBefore(const char* a, const char* b) {
    const auto collation = makeIcuCollation();
    return collation->sortKey(a) < collation->sortKey(b);
  }
};

using IcuDates = IcuPlatform;
using IcuOrder = IcuPlatform;

TEST_F(IcuDates, AreWrittenAsTheLanguageForDatesHasThem) {
  struct Row {
    const char* locale;
    const char* text;
  };
  constexpr Row kRows[] = {{"en_GB.UTF-8", "21 Nov 2026, 14:05"},
                           {"de_DE.UTF-8", "21.11.2026, 14:05"},
                           {"de_DE.UTF-8@euro", "21.11.2026, 14:05"},
                           {"sv_SE", "21 nov. 2026 14:05"},
                           {"ja_JP.UTF-8", "2026/11/21 14:05"},
                           {"C", "Nov 21, 2026, 2:05 PM"},
                           {"POSIX", "Nov 21, 2026, 2:05 PM"},
                           {"C.UTF-8", "Nov 21, 2026, 2:05 PM"},
                           {"", "Nov 21, 2026, 2:05 PM"}};
  setenv("LC_MESSAGES", "fr_FR.UTF-8", 1);
  setenv("LANG", "C", 1);
  for (const Row& row : kRows) {
    setenv("LC_TIME", row.locale, 1);
    EXPECT_EQ(date(kDate), row.text) << row.locale;
  }
}

TEST_F(IcuDates, TheLocaleThatTheProgramHasSetComesFirst) {
  if (std::setlocale(LC_TIME, "C.UTF-8") == nullptr) GTEST_SKIP() << "no locale C.UTF-8";
  setenv("LC_TIME", "de_DE.UTF-8", 1);
  EXPECT_EQ(date(kDate), "Nov 21, 2026, 2:05 PM");
}

TEST_F(IcuDates, LcAllComesBeforeAllElseAndLangAfterIt) {
  setenv("LANG", "de_DE.UTF-8", 1);
  EXPECT_EQ(date(kDate), "21.11.2026, 14:05");
  setenv("LC_TIME", "C", 1);
  EXPECT_EQ(date(kDate), "Nov 21, 2026, 2:05 PM");
  setenv("LC_ALL", "ja_JP.UTF-8", 1);
  EXPECT_EQ(date(kDate), "2026/11/21 14:05");
}

/// What ICU writes without anything being kept.
std::string writtenByIcu(const char* locale, std::time_t seconds) {
  const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(
      icu::DateFormat::kMedium, icu::DateFormat::kShort, icu::Locale(locale)));
  icu::UnicodeString formatted;
  format->format(static_cast<double>(seconds) * 1000, formatted);
  std::string text;
  return formatted.toUTF8String(text);
}

TEST_F(IcuDates, TextsThatAreKeptAreTheSame) {
  // Zones with summer times, of half an hour, and of old of odd seconds.
  for (const char* zone : {"UTC", "Europe/Berlin", "Australia/Lord_Howe", "Africa/Monrovia"}) {
    setZone(zone);
    for (const char* locale : {"en_GB", "ar_EG", "th_TH", "zh_TW"}) {
      setenv("LC_ALL", locale, 1);
      const auto formatter = makeIcuDateFormatter();
      std::mt19937 random(1);
      for (const std::time_t around :
           {std::time_t{0}, std::time_t{-2'000'000'000}, std::time_t{1'792'890'000}, kDate}) {
        std::uniform_int_distribution<std::time_t> near(around - 4000, around + 4000);
        for (int i = 0; i < 300; ++i) {
          const std::time_t seconds = near(random);
          ASSERT_EQ(formatter->stringFromDate({seconds, 999'999'999}),
                    writtenByIcu(locale, seconds))
              << zone << ' ' << locale << ' ' << seconds;
        }
      }
    }
  }
}

TEST_F(IcuDates, MoreThanAreKeptAreWrittenAllTheSame) {
  setenv("LC_ALL", "en_GB", 1);
  const auto formatter = makeIcuDateFormatter();
  for (int minute = 0; minute < 10'000; ++minute)
    EXPECT_FALSE(formatter->stringFromDate({kDate + minute * 60, 0}).empty());
  EXPECT_EQ(formatter->stringFromDate({kDate, 0}), "21 Nov 2026, 14:05");
}

TEST_F(IcuOrder, IsThatOfTheLanguageForIt) {
  setenv("LC_MESSAGES", "de_DE.UTF-8", 1);
  setenv("LC_COLLATE", "sv_SE.UTF-8", 1);
  EXPECT_TRUE(isBefore("zebra", "öl")) << "a letter of its own";
  setenv("LC_COLLATE", "de_DE.UTF-8", 1);
  EXPECT_TRUE(isBefore("öl", "zebra")) << "an o with dots";
}

TEST_F(IcuOrder, TakesNoRegardToCaseAndReadsNoNumbers) {
  setenv("LC_ALL", "en_GB.UTF-8", 1);
  const auto collation = makeIcuCollation();
  EXPECT_EQ(collation->sortKey("Read.me"), collation->sortKey("read.me"));
  EXPECT_NE(collation->sortKey("résumé"), collation->sortKey("resume"));
  EXPECT_TRUE(isBefore("a.txt", "B.txt"));
  EXPECT_TRUE(isBefore("file10", "file2"));
}

TEST_F(IcuOrder, NamesOfAnyLengthAndAnyBytesHaveKeys) {
  const auto collation = makeIcuCollation();
  const std::string longName(255, 'x');
  EXPECT_EQ(collation->sortKey(longName), collation->sortKey(longName));
  EXPECT_LT(collation->sortKey(longName), collation->sortKey(longName + "x"));
  EXPECT_LT(collation->sortKey("a\xFF"), collation->sortKey("b"));
  EXPECT_LT(collation->sortKey(""), collation->sortKey("a"));
}

}  // namespace
}  // namespace lumisk::desktop
