#include "core/lowercase.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/utf8.h"

namespace lumisk {
namespace {

struct LowercaseCase {
  const char* label;
  std::string text;
  std::string expected;
};

TEST(Lowercase, LettersOfEveryScriptWithCase) {
  const std::vector<LowercaseCase> cases = {
      {"empty", "", ""},
      {"ASCII", "README.MD-[@`{]~09", "readme.md-[@`{]~09"},
      {"Latin-1", "ÀÖØÞ×ÿß", "àöøþ×ÿß"},
      {"Latin Extended", "ĀŁŽŸȘẞỲ", "āłžÿșßỳ"},
      {"Greek", "ΑΩΆΏΪ", "αωάώϊ"},
      {"Cyrillic", "АЯЁЂҐӁ", "аяёђґӂ"},
      {"Armenian", "ԱՖ", "աֆ"},
      {"full width", "ＡＺ", "ａｚ"},
      {"Deseret, beyond sixteen bits", "𐐀", "𐐨"},
      {"scripts without case stay", "日本語 العربية हिन्दी 😀", "日本語 العربية हिन्दी 😀"},
      {"capital I with dot", "İ", "i\xCC\x87"},
  };
  for (const LowercaseCase& row : cases) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(lowercased(row.text), row.expected);
  }
}

TEST(Lowercase, SigmaAtTheEndOfAWordIsFinal) {
  const std::vector<LowercaseCase> cases = {
      {"end of the text", "ΟΔΟΣ", "οδος"},
      {"inside", "ΣΟΣΑ", "σοσα"},
      {"before a blank", "ΟΣ ΟΣ", "ος ος"},
      {"alone", "Σ", "σ"},
      {"after a mark", "Α\xCC\x81Σ", "α\xCC\x81ς"},
      {"before a mark and a letter", "ΑΣ\xCC\x81Α", "ασ\xCC\x81α"},
  };
  for (const LowercaseCase& row : cases) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(lowercased(row.text), row.expected);
  }
}

// Lower-case text is its own lower case, whichever code point it is made of.
TEST(Lowercase, TwiceIsOnce) {
  for (char32_t point = 0; point <= 0x10FFFF; ++point) {
    if (point == 0xD800) point = 0xE000;
    std::string text;
    appendUtf8(text, point);
    const std::string once = lowercased(text);
    ASSERT_EQ(lowercased(once), once) << static_cast<unsigned>(point);
  }
}

}  // namespace
}  // namespace lumisk
