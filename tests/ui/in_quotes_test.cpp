#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "core/utf8.h"
#include "ui/outline.h"

namespace lumisk::ui {
namespace {

// Undoes `inQuotes`: what a reader does who wants the bytes back.
std::string withoutQuotes(std::string_view line) {
  std::string bytes;
  for (std::size_t at = 1; at + 1 < line.size(); ++at) {
    if (line[at] != '\\') {
      bytes += line[at];
      continue;
    }
    const char kind = line[++at];
    if (kind == 'x') {
      bytes += static_cast<char>(std::stoi(std::string(line.substr(at + 1, 2)), nullptr, 16));
      at += 2;
    } else if (kind == 'u') {
      const std::size_t end = line.find('}', at);
      const std::string digits(line.substr(at + 2, end - at - 2));
      appendUtf8(bytes, static_cast<char32_t>(std::stoul(digits, nullptr, 16)));
      at = end;
    } else {
      bytes += kind == 'n' ? '\n' : kind == 'r' ? '\r' : kind == 't' ? '\t' : kind;
    }
  }
  return bytes;
}

void expectReadableOnOneLine(const std::string& bytes) {
  const std::string line = inQuotes(bytes);
  EXPECT_TRUE(isValidUtf8(line)) << line;
  EXPECT_EQ(line.front(), '"');
  EXPECT_EQ(line.back(), '"');
  for (const char c : line) {
    EXPECT_FALSE(static_cast<unsigned char>(c) < 0x20 || c == 0x7F) << line;
  }
  EXPECT_EQ(withoutQuotes(line), bytes) << line;
}

struct InQuotesCase {
  const char* label;
  std::string bytes;
  const char* line;
};

TEST(InQuotes, EscapesWhatCannotBeReadOnOneLine) {
  const InQuotesCase cases[] = {
      {"nothing", "", R"("")"},
      {"plain", "notes.md", R"("notes.md")"},
      {"letters of other scripts", "Größe 日本", R"("Größe 日本")"},
      {"beyond the first plane", "\xF0\x9F\x93\x81", "\"\xF0\x9F\x93\x81\""},
      {"quote and backslash", R"(a"b\c)", R"("a\"b\\c")"},
      {"line breaks and tab", "a\nb\r\tc", R"("a\nb\r\tc")"},
      {"NUL", std::string("a\0b", 3), R"("a\u{0}b")"},
      {"escape and DEL", "\x1B[31m\x7F", R"("\u{1b}[31m\u{7f}")"},
      {"second controls", "\xC2\x85", R"("\u{85}")"},
      {"line separator", "\xE2\x80\xA8", R"("\u{2028}")"},
      {"text turned around", "\xE2\x80\xAEgpj.exe", R"("\u{202e}gpj.exe")"},
      {"byte-order mark", "\xEF\xBB\xBFx", R"("\u{feff}x")"},
      {"no UTF-8", "caf\xE9.txt", R"("caf\xe9.txt")"},
      {"a low byte after a cut sequence", "\xE2\x82", R"("\xe2\x82")"},
      {"overlong", "\xC0\x80", R"("\xc0\x80")"},
      {"surrogate", "\xED\xA0\x80", R"("\xed\xa0\x80")"},
      {"above the last code point", "\xF4\x90\x80\x80", R"("\xf4\x90\x80\x80")"},
      {"cut before a character", "\xE2\x82\xC3\xA9", "\"\\xe2\\x82\xC3\xA9\""},
  };
  for (const InQuotesCase& row : cases) EXPECT_EQ(inQuotes(row.bytes), row.line) << row.label;
}

TEST(InQuotes, EveryByteCanBeReadBack) {
  for (int byte = 0; byte < 256; ++byte) {
    expectReadableOnOneLine(std::string(1, static_cast<char>(byte)));
    expectReadableOnOneLine("a" + std::string(1, static_cast<char>(byte)) + "b");
  }
}

TEST(InQuotes, EverySequenceOfThreeTellingBytesCanBeReadBack) {
  const std::string telling = std::string("\0", 1) + "\n\"\\xu{}4\x7F\x80\xBF\xC2\xE2\xED\xF0\xFF";
  for (const char first : telling) {
    for (const char second : telling) {
      for (const char third : telling) expectReadableOnOneLine({first, second, third});
    }
  }
}

TEST(InQuotes, EveryCodePointCanBeReadBack) {
  for (char32_t point = 0; point <= 0x10FFFF; point += point < 0x3000 ? 1 : 251) {
    if (point >= 0xD800 && point <= 0xDFFF) continue;
    std::string bytes;
    appendUtf8(bytes, point);
    ASSERT_EQ(withoutQuotes(inQuotes(bytes)), bytes) << std::hex << static_cast<unsigned>(point);
  }
}

}  // namespace
}  // namespace lumisk::ui
