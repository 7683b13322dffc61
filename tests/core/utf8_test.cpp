#include "core/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/kernels/kernel_set.h"
#include "support/exact_memory.h"
#include "support/generated_text.h"

namespace lumisk {
namespace {

/// Decodes by arithmetic: what the bits say must be what the encoder would have written.
std::size_t sequenceLength(std::string_view bytes) {
  const auto byte = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  std::size_t length = 0;
  unsigned point = 0;
  if (byte(0) < 0x80) return 1;
  if ((byte(0) & 0xE0) == 0xC0) length = 2, point = byte(0) & 0x1FU;
  if ((byte(0) & 0xF0) == 0xE0) length = 3, point = byte(0) & 0x0FU;
  if ((byte(0) & 0xF8) == 0xF0) length = 4, point = byte(0) & 0x07U;
  if (length == 0 || bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    point = point << 6 | (byte(i) & 0x3FU);
  }
  if (point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) return 0;
  const std::size_t shortest = point < 0x80 ? 1U : point < 0x800 ? 2U : point < 0x10000 ? 3U : 4U;
  return length == shortest ? length : 0;
}

bool isWellFormed(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = sequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

void expectAllAgree(std::string_view bytes, std::size_t offset = 0) {
  const ExactCopy input(bytes, offset);
  const bool expected = isWellFormed(bytes);
  for (const KernelSet* set : runnableKernelSets()) {
    ASSERT_EQ(set->isUtf8(input.begin(), input.end()), expected)
        << set->name << " " << testing::PrintToString(bytes);
  }
}

// The first and last of each range that means something else, in a lead or a continuation.
constexpr std::string_view kEdges(
    "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4"
    "\xF5\xF7\xF8\xFF",
    27);

std::string mixedText(std::mt19937& random, std::size_t characters) {
  constexpr char32_t kLast[] = {0x7F, 0x7FF, 0xD7FF, 0xFFFF, 0x10FFFF};
  std::string text;
  for (std::size_t i = 0; i < characters; ++i) {
    char32_t point = static_cast<char32_t>(random()) % (kLast[random() % 5] + 1);
    if (point >= 0xD800 && point <= 0xDFFF) point = U'\uFFFD';
    appendUtf8(text, point);
  }
  return text;
}

TEST(Utf8, AcceptsEveryCharacter) {
  for (char32_t point = 0; point <= 0x10FFFF; ++point) {
    if (point >= 0xD800 && point <= 0xDFFF) continue;
    std::string text;
    appendUtf8(text, point);
    ASSERT_TRUE(isValidUtf8(text)) << std::hex << unsigned{point};
    ASSERT_EQ(sequenceLength(text), text.size());
  }
}

TEST(Utf8, RefusesWhatIsNoCharacter) {
  const std::vector<std::pair<const char*, std::string>> rows = {
      {"continuation alone", "\x80"},
      {"overlong NUL", std::string("\xC0\x80", 2)},
      {"overlong slash, two bytes", "\xC0\xAF"},
      {"overlong slash, three bytes", "\xE0\x80\xAF"},
      {"overlong slash, four bytes", "\xF0\x80\x80\xAF"},
      {"largest overlong, two bytes", "\xC1\xBF"},
      {"largest overlong, three bytes", "\xE0\x9F\xBF"},
      {"largest overlong, four bytes", "\xF0\x8F\xBF\xBF"},
      {"first surrogate", "\xED\xA0\x80"},
      {"last surrogate", "\xED\xBF\xBF"},
      {"pair of surrogates", "\xED\xA1\x8C\xED\xBE\xB4"},
      {"first above the last", "\xF4\x90\x80\x80"},
      {"five bytes", "\xF8\x88\x80\x80\x80"},
      {"lead byte F5", "\xF5\x80\x80\x80"},
      {"cut after one of two", "a\xC3"},
      {"cut after two of three", "a\xE2\x82"},
      {"cut after three of four", "a\xF0\x9F\x98"},
      {"one continuation too many", "\xC3\xA4\x80"},
      {"Latin-1", "caf\xE9"},
      {"UTF-16 byte-order mark", "\xFF\xFE"},
  };
  for (const auto& [label, bytes] : rows) {
    EXPECT_FALSE(isValidUtf8(bytes)) << label;
    EXPECT_FALSE(decodedUtf8(bytes).has_value()) << label;
  }
}

TEST(Utf8, DropsOneLeadingByteOrderMark) {
  EXPECT_EQ(decodedUtf8("\xEF\xBB\xBFtext"), "text");
  EXPECT_EQ(decodedUtf8("\xEF\xBB\xBF"), "");
  EXPECT_EQ(decodedUtf8("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\xEF\xBB\xBFx");
  EXPECT_EQ(decodedUtf8("a\xEF\xBB\xBF"), "a\xEF\xBB\xBF");
  EXPECT_EQ(decodedUtf8("\xEF\xBB"), std::nullopt);
}

TEST(Utf8, DecodesNothingAndNulAsText) {
  EXPECT_EQ(decodedUtf8(""), "");
  const std::string_view nul("\0a\0", 3);
  EXPECT_EQ(decodedUtf8(nul), nul);
}

TEST(Utf8, PointsIntoWhatItDecodes) {
  const std::string bytes = "\xEF\xBB\xBFtext";
  EXPECT_EQ(decodedUtf8(bytes)->data(), bytes.data() + 3);
}

TEST(Utf8, FindsOneBadByteAnywhereInALargeFile) {
  const std::string good = repeated("plain text, \xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80; ", 1 << 20);
  ASSERT_TRUE(isValidUtf8(good));
  std::vector<std::size_t> places = {0, good.size() / 2, good.size() - 1};
  for (std::size_t at = 4000; at < 4300; ++at) places.push_back(at);
  for (const std::size_t at : places) {
    std::string bad = good;
    bad[at] = '\xFF';
    ASSERT_FALSE(isValidUtf8(bad)) << at;
  }
}

TEST(Utf8, BeginsWithAnyPartOfAText) {
  const std::string text = "a\u00e9b\u20acc\U0001F30Ad";
  for (std::size_t size = 0; size <= text.size(); ++size)
    EXPECT_TRUE(canBeginUtf8(std::string_view(text).substr(0, size))) << size;
}

TEST(Utf8, BeginsWithNothingElse) {
  const std::string before(100, 'x');
  for (const std::string_view bad : {"\xFF", "\x80", "\xC1\x80", "a\x80\x80\x80", "\xE2\x82x"}) {
    EXPECT_FALSE(canBeginUtf8(bad)) << bad;
    EXPECT_FALSE(canBeginUtf8(before + std::string(bad))) << bad;
    EXPECT_FALSE(canBeginUtf8(std::string(bad) + before)) << bad;
    EXPECT_FALSE(canBeginUtf8(std::string(bad) + "\xE2\x82")) << bad;
  }
}

TEST(Utf8Kernels, AgreeOnEveryPairOfBytes) {
  for (unsigned pair = 0; pair < 0x10000; ++pair) {
    const char bytes[] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
    expectAllAgree({bytes, 2});
  }
}

TEST(Utf8Kernels, AgreeOnEverySequenceOfEdges) {
  for (const std::string& bytes : allTexts(kEdges, 4)) expectAllAgree(bytes);
}

TEST(Utf8Kernels, AgreeOnEdgesWhereBlocksMeet) {
  for (const std::string& bytes : allTexts(kEdges, 3)) {
    for (const std::size_t before : {13U, 14U, 15U, 30U, 31U, 61U, 62U, 63U}) {
      expectAllAgree(std::string(before, 'a') + bytes + std::string(40, 'z'));
    }
    expectAllAgree(std::string(64 - bytes.size(), 'a') + bytes);
  }
}

TEST(Utf8Kernels, AgreeOnEveryLengthAndOffset) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size <= 300; ++size) {
    const std::string text = mixedText(random, 310).substr(0, size);
    expectAllAgree(text, size * 7 % 65);
    expectAllAgree(std::string(size, 'a'), size % 65);
  }
}

TEST(Utf8Kernels, AgreeOnTextsWithOneByteChanged) {
  std::mt19937 random(2);
  for (int round = 0; round < 300; ++round) {
    std::string text = mixedText(random, 100);
    expectAllAgree(text);
    for (int change = 0; change < 40; ++change) {
      std::string changed = text;
      changed[random() % changed.size()] = static_cast<char>(random());
      expectAllAgree(changed);
    }
  }
}

TEST(Utf8Kernels, SeeASequenceCutByAnAsciiBlock) {
  for (const char* cut : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F", "\xF0\x9F\x98"}) {
    for (std::size_t blocks = 1; blocks < 4; ++blocks) {
      std::string text(blocks * 64, 'a');
      text.replace(text.size() - std::string_view(cut).size(), std::string::npos, cut);
      expectAllAgree(text);
      expectAllAgree(text + std::string(64, 'b'));
      expectAllAgree(text + std::string(200, 'b') + "\xC3\xA4");
    }
  }
}

TEST(WithReplacementCharacters, ReplacesEachByteThatIsNoText) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", ""},
      {"name.md", "name.md"},
      {"\xC3\xA4", "\xC3\xA4"},
      {"a\xFFz", "a\xEF\xBF\xBDz"},
      {"caf\xE9", "caf\xEF\xBF\xBD"},
      {"\xE2\x82", "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xC3\xC3\xA4", "\xEF\xBF\xBD\xC3\xA4"},
  };
  for (const auto& [bytes, text] : rows) EXPECT_EQ(withReplacementCharacters(bytes), text);
}

TEST(WithReplacementCharacters, AlwaysGivesText) {
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    const std::string bytes = randomText(random, kEdges, random() % 40);
    EXPECT_TRUE(isWellFormed(withReplacementCharacters(bytes)));
  }
}

TEST(AppendUtf8, WritesTheFirstAndLastOfEachLength) {
  const std::vector<std::pair<char32_t, std::string>> rows = {
      {0x0, std::string(1, '\0')},
      {0x7F, "\x7F"},
      {0x80, "\xC2\x80"},
      {0x7FF, "\xDF\xBF"},
      {0x800, "\xE0\xA0\x80"},
      {0xFFFF, "\xEF\xBF\xBF"},
      {0x10000, "\xF0\x90\x80\x80"},
      {0x10FFFF, "\xF4\x8F\xBF\xBF"},
  };
  for (const auto& [point, bytes] : rows) {
    std::string text = "x";
    appendUtf8(text, point);
    EXPECT_EQ(text, "x" + bytes);
  }
}

TEST(ForEachCodePoint, ReadsWhatAppendUtf8Wrote) {
  std::mt19937 random(4);
  const std::string text = mixedText(random, 5000);
  std::string again;
  std::string bytes;
  forEachCodePoint(text, [&](char32_t point, std::string_view itsBytes) {
    appendUtf8(again, point);
    bytes += itsBytes;
  });
  EXPECT_EQ(again, text);
  EXPECT_EQ(bytes, text);
}

}  // namespace
}  // namespace lumisk
