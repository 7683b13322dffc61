#include "core/whitespace.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "core/utf8.h"
#include "support/exact_memory.h"

namespace lumisk {
namespace {

const std::set<char32_t> kBlanks = {
    U'\t',     U' ',      U'\u00A0', U'\u1680', U'\u2000', U'\u2001',
    U'\u2002', U'\u2003', U'\u2004', U'\u2005', U'\u2006', U'\u2007',
    U'\u2008', U'\u2009', U'\u200A', U'\u202F', U'\u205F', U'\u3000',
};

std::string utf8(char32_t point) {
  std::string text;
  appendUtf8(text, point);
  return text;
}

TEST(TrimmedBlanks, KeepsTheBlanksInside) {
  EXPECT_EQ(trimmedBlanks(" \t a b\tc \t"), "a b\tc");
  EXPECT_EQ(trimmedBlanks("a\xC2\xA0z"), "a\xC2\xA0z");
}

TEST(TrimmedBlanks, LeavesNothingOfBlanksAlone) {
  EXPECT_EQ(trimmedBlanks(""), "");
  std::string all;
  for (const char32_t blank : kBlanks) all += utf8(blank);
  EXPECT_EQ(trimmedBlanks(all), "");
  EXPECT_EQ(trimmedBlanks(all + "x" + all), "x");
}

TEST(TrimmedBlanks, KnowsTheBlanksAmongAllCharacters) {
  for (char32_t point = 0; point <= 0x10FFFF; ++point) {
    if (point >= 0xD800 && point <= 0xDFFF) continue;
    const std::string character = utf8(point);
    const bool isBlank = kBlanks.contains(point);
    ASSERT_EQ(trimmedBlanks(character), isBlank ? "" : character) << std::hex << unsigned{point};
    ASSERT_EQ(leadingBlankSize(character), isBlank ? character.size() : 0);
    ASSERT_EQ(trimmedBlanks(character + "x" + character),
              isBlank ? "x" : character + "x" + character);
  }
}

TEST(TrimmedBlanks, KeepsLineBreaksAndWhatOnlyLooksBlank) {
  for (const char* kept : {"\n", "\r", "\r\n", "\v", "\f", "\xC2\x85", "\xE2\x80\xA8",
                           "\xE2\x80\xA9", "\xE2\x80\x8B", "\xEF\xBB\xBF", "\xE1\xA0\x8E"}) {
    EXPECT_EQ(trimmedBlanks(kept), kept);
  }
}

TEST(TrimmedBlanks, ReadsNoFurtherThanAnUnfinishedCharacter) {
  for (const char* part : {"\xC2", "\xE2", "\xE2\x80", "\xE3\x80", "\x80", "\x80\x80"}) {
    const ExactCopy text(part);
    EXPECT_EQ(trimmedBlanks(text.text()), part);
  }
}

}  // namespace
}  // namespace lumisk
