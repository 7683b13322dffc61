#include "core/line_break.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace lumisk {
namespace {

const std::vector<std::string> kBreaks = {"\n",       "\v",           "\f",          "\r",
                                          "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};

TEST(LineBreak, EachKindEndsALineAtEveryDistance) {
  for (const std::string& lineBreak : kBreaks) {
    for (std::size_t before = 0; before < 70; ++before) {
      for (std::size_t behind = 0; behind < 40; ++behind) {
        const std::string text = std::string(before, 'x') + lineBreak + std::string(behind, 'y');
        const LineBreak expected = {before, lineBreak.size()};
        ASSERT_EQ(findLineBreak(text, 0), expected);
        ASSERT_EQ(findLineBreak(text, before), expected);
        ASSERT_EQ(findLineBreak(text, before + lineBreak.size()), (LineBreak{text.size(), 0}));
      }
    }
  }
}

TEST(LineBreak, FindsTheFirst) {
  for (std::size_t distance = 1; distance < 40; ++distance) {
    const std::string text = "ab" + kBreaks[6] + std::string(distance, 'x') + "\n";
    EXPECT_EQ(findLineBreak(text, 0), (LineBreak{2, 3}));
    EXPECT_EQ(findLineBreak(text, 5), (LineBreak{5 + distance, 1}));
  }
}

TEST(LineBreak, OtherCharactersAreNone) {
  for (const std::string other : {"\t", "\x0E", "\x1C", "\x1D", "\x1E", " ", "\xC2\x84", "\xC2\x86",
                                  "\xC3\x85", "\xE2\x80\xA7", "\xE2\x80\xAA", "\xE2\x81\xA8",
                                  "\xE3\x80\xA8", "\xE2\x84\xA9", "\xF0\x9F\x80\xA8"}) {
    for (std::size_t before = 0; before < 40; ++before) {
      const std::string text = std::string(before, 'x') + other + std::string(40, 'y');
      EXPECT_EQ(findLineBreak(text, 0), (LineBreak{text.size(), 0})) << before;
    }
  }
}

TEST(LineBreak, NoTextHasNone) { EXPECT_EQ(findLineBreak("", 0), (LineBreak{0, 0})); }

}  // namespace
}  // namespace lumisk
