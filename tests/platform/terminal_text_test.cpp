#include "platform/terminal_text.h"

#include <gtest/gtest.h>

namespace lumisk {
namespace {

TEST(TerminalText, EveryControlCharacterOfOneByteBecomesAQuestionMark) {
  for (int byte = 0; byte < 0x80; ++byte) {
    const std::string text = {'a', static_cast<char>(byte), 'b'};
    const bool isControl = byte < 0x20 || byte == 0x7F;
    EXPECT_EQ(terminalText(text), isControl ? "a?b" : text) << byte;
  }
}

TEST(TerminalText, SoDoThoseOfTwoBytes) {
  for (int byte = 0x80; byte < 0xC0; ++byte) {
    const std::string text = {'a', '\xC2', static_cast<char>(byte), 'b'};
    EXPECT_EQ(terminalText(text), byte < 0xA0 ? "a?b" : text) << byte;
  }
}

TEST(TerminalText, OtherTextStays) {
  for (const char* const text : {"", "a b.md", "\u00fcber", "\u65e5\u672c.md", "\xC2", "\xFF"})
    EXPECT_EQ(terminalText(text), text);
}

TEST(TerminalText, AComplaintIsOneLine) {
  EXPECT_EQ(complaintLine("no 'a\n\x1b[2J'"), "lumisk: no 'a??[2J'\n");
}

}  // namespace
}  // namespace lumisk
