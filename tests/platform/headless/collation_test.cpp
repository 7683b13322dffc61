#include "platform/headless/collation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "test_environment.h"

namespace lumisk {
namespace {

using Names = std::vector<std::string>;

Names sorted(Names names, const std::string& localeName) {
  const HeadlessCollation collation(localeName);
  std::ranges::stable_sort(names, {},
                           [&](const std::string& name) { return collation.sortKey(name); });
  return names;
}

TEST(HeadlessCollation, CLocaleComparesCodePointsWithoutCase) {
  EXPECT_EQ(sorted({"b", "C", "a", "D", "_", "0"}, "C"), Names({"0", "_", "a", "b", "C", "D"}));
  EXPECT_EQ(sorted({"é", "z", "É", "A", "😀", "ﬀ"}, "C"), Names({"A", "z", "é", "É", "ﬀ", "😀"}));
}

TEST(HeadlessCollation, NamesThatDifferInCaseAloneHaveEqualKeys) {
  const HeadlessCollation collation("C");
  EXPECT_EQ(collation.sortKey("Read.me"), collation.sortKey("read.ME"));
  EXPECT_EQ(collation.sortKey("ÄÖÜ ΛΜΝ Ж"), collation.sortKey("äöü λμν ж"));
}

TEST(HeadlessCollation, DigitsAreNotReadAsNumbers) {
  EXPECT_EQ(sorted({"file2", "file10", "file1"}, "C"), Names({"file1", "file10", "file2"}));
}

TEST(HeadlessCollation, EmptyNameAndPrefixesComeFirst) {
  EXPECT_EQ(sorted({"ab", "a", "", "a.txt"}, "C"), Names({"", "a", "a.txt", "ab"}));
}

TEST(HeadlessCollation, NamesThatAreNoTextHaveOneOrderAndKeysOfTheirOwn) {
  const Names names = {"a\xFF", "a\xFE", "A\xFE",        "\x80",
                       "a\xC3", "b",     "\xED\xA0\x80", "a\xEF\xBF\xBD"};
  const HeadlessCollation collation("C");
  for (const std::string& a : names) {
    for (const std::string& b : names) {
      EXPECT_EQ(collation.sortKey(a) == collation.sortKey(b), a == b)
          << testing::PrintToString(a) << " and " << testing::PrintToString(b);
    }
  }
  Names backwards(names.rbegin(), names.rend());
  EXPECT_EQ(sorted(names, "C"), sorted(backwards, "C"));
}

TEST(HeadlessCollation, EveryByteAloneHasAKeyOfItsOwnButForCase) {
  const HeadlessCollation collation("C");
  Names keys;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte < 'A' || byte > 'Z') {
      keys.push_back(collation.sortKey(std::string(1, static_cast<char>(byte))));
    }
  }
  std::ranges::sort(keys);
  EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end());
}

TEST(HeadlessCollation, LongNames) {
  const std::string name(255, 'x');
  EXPECT_EQ(sorted({name + "b", name + "a", name}, "C"), Names({name, name + "a", name + "b"}));
}

class HeadlessCollationInLocales : public test::WithLocales {};

TEST_F(HeadlessCollationInLocales, OrdersAsTheLanguageDoes) {
  EXPECT_EQ(sorted({"zeta", "Äpfel", "apfel", "Zoo", "äpfel", "Birne"}, "de_DE.UTF-8"),
            Names({"apfel", "Äpfel", "äpfel", "Birne", "zeta", "Zoo"}));
  EXPECT_EQ(sorted({"ö", "z", "ä", "å", "a"}, "sv_SE.UTF-8"), Names({"a", "z", "å", "ä", "ö"}));
  EXPECT_EQ(sorted({"い", "ん", "あ", "a"}, "ja_JP.UTF-8"), Names({"a", "あ", "い", "ん"}));
}

TEST_F(HeadlessCollationInLocales, CaseFollowsTheLanguage) {
  const HeadlessCollation turkish("tr_TR.UTF-8");
  EXPECT_EQ(turkish.sortKey("DIŞ"), turkish.sortKey("dış"));
  EXPECT_NE(turkish.sortKey("I"), turkish.sortKey("i"));
  const HeadlessCollation english("en_US.UTF-8");
  EXPECT_EQ(english.sortKey("I"), english.sortKey("i"));
}

TEST_F(HeadlessCollationInLocales, DifferentNamesNeverShareAKey) {
  const HeadlessCollation collation("en_US.UTF-8");
  const Names names = {"a",        "á",          "a\u0301",    "ª",  "a b", "ab", "a-b",
                       "a\u200Bb", "\U000F0000", "\U000F0001", "①",  "1",   "ﬁ",  "fi",
                       "a\xFF",    "a\xFE",      "\n",         "\t", " "};
  for (const std::string& a : names) {
    for (const std::string& b : names) {
      EXPECT_EQ(collation.sortKey(a) == collation.sortKey(b), a == b) << a << " and " << b;
    }
  }
}

TEST_F(HeadlessCollationInLocales, KeysHoldNoNulBeforeTheName) {
  // The key ends at its first NUL, and the name follows: only so do bytes compare as names do.
  const HeadlessCollation collation("en_US.UTF-8");
  const std::string key = collation.sortKey("Ab");
  EXPECT_EQ(key.substr(key.find('\0')), std::string("\0ab", 3));
}

}  // namespace
}  // namespace lumisk
