#include "desktop/display_text.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace lumisk::desktop {
namespace {

using namespace std::string_view_literals;

TEST(DisplayText, TextStaysAsItIs) {
  EXPECT_EQ(displayText("Ada\n\tLovelace \u00e9\U0001F4A1"), "Ada\n\tLovelace \u00e9\U0001F4A1");
}

TEST(DisplayText, EveryByteBecomesTextThatCanBeShown) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string shown = displayText(std::string(1, static_cast<char>(byte)));
    EXPECT_TRUE(g_utf8_validate(shown.data(), static_cast<gssize>(shown.size()), nullptr)) << byte;
    EXPECT_FALSE(shown.empty()) << byte;
  }
}

TEST(DisplayText, NulIsShownAsItsSymbol) { EXPECT_EQ(displayText("a\0b"sv), "a\u2400b"); }

TEST(DisplayText, ATitleIsALineOfAtMostAKilobyte) {
  EXPECT_EQ(displayTitle("notes.md"), "notes.md");
  EXPECT_EQ(displayTitle("a\nb\tc\x1b[0m\u2028d\u2029e\u0085f"),
            "a\u23ceb\ufffdc\ufffd[0m\ufffdd\ufffde\ufffdf");
  EXPECT_EQ(displayTitle(std::string(1024, 'x')), std::string(1024, 'x'));
  EXPECT_EQ(displayTitle(std::string(1025, 'x')), std::string(1024, 'x') + "\u2026");
  // Cut between letters, however long they are.
  for (const std::string letter : {"x", "\u00e9", "\u20ac", "\U0001F4A1"}) {
    std::string text;
    while (text.size() < 4096) text += letter;
    const std::string title = displayTitle(text);
    EXPECT_EQ(title, text.substr(0, 1024 / letter.size() * letter.size()) + "\u2026");
  }
}

TEST(DisplayText, ATitleOfAnyBytesIsText) {
  for (int byte = 0; byte < 256; ++byte) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{1023}, std::size_t{5000}}) {
      const std::string title = displayTitle(std::string(length, static_cast<char>(byte)));
      EXPECT_TRUE(g_utf8_validate(title.data(), static_cast<gssize>(title.size()), nullptr));
    }
  }
}

TEST(DisplayText, ALineHoldsNoLineEnd) { EXPECT_EQ(displayLine("a\nb\rc"), "a\u23ceb\u23cec"); }

}  // namespace
}  // namespace lumisk::desktop
