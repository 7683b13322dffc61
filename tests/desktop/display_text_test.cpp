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

TEST(DisplayText, ALineHoldsNoLineEnd) { EXPECT_EQ(displayLine("a\nb\rc"), "a\u23ceb\u23cec"); }

}  // namespace
}  // namespace lumisk::desktop
