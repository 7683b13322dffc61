#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "core/code_page.h"
#include "core/json_page.h"
#include "core/output.h"
#include "json_testing.h"
#include "random_json.h"

namespace lumisk {
namespace {

const FileURL kFile = FileURL::fromPath("/data/dummy.jsonl");
constexpr std::string_view kBase = "file:///data/";

std::string formattedPage(std::string_view content, bool isDark = false) {
  StringOutput out(0);
  writeJSONLHTML(out, content, kFile, isDark, true);
  std::string streamed = out.take();
  EXPECT_EQ(buildJSONLHTML(content, kFile, isDark, true), streamed);
  return streamed;
}

std::string block(std::string_view text) {
  return "<pre style=\"margin-bottom: 8px;\"><code class=\"language-json\">" + std::string(text) +
         "</code></pre>";
}

std::string pageOfBlocks(const std::vector<std::string>& texts, bool isDark = false) {
  std::string fragment;
  for (const std::string& text : texts) fragment += block(text);
  return buildCodePage(texts.empty() ? "<p>Empty file.</p>" : fragment, kBase, isDark);
}

void expectBlocks(std::string_view content, const std::vector<std::string>& texts) {
  for (const bool isDark : {false, true}) {
    EXPECT_EQ(formattedPage(content, isDark), pageOfBlocks(texts, isDark)) << content;
  }
}

TEST(JsonlPage, EachRecordIsABlock) {
  expectBlocks("{\"a\":1}\n[2.0]\n{}\n", {"{\n  \"a\" : 1\n}", "[\n  2\n]", "{\n\n}"});
  expectBlocks("[1]", {"[\n  1\n]"});
  expectBlocks("[\"a\\/b & c\"]", {"[\n  \"a/b &amp; c\"\n]"});
}

TEST(JsonlPage, BlankLinesMakeNoBlock) {
  expectBlocks("[1]\n\n \t\n[2]\n\xC2\xA0\xE3\x80\x80\n[3]\n\n",
               {"[\n  1\n]", "[\n  2\n]", "[\n  3\n]"});
}

TEST(JsonlPage, EveryLineBreakEndsARecord) {
  for (const std::string lineBreak :
       {"\n", "\v", "\f", "\r", "\r\n", "\n\r", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    const std::string text = "[1]" + lineBreak + "[2]" + lineBreak;
    expectBlocks(text, {"[\n  1\n]", "[\n  2\n]"});
  }
}

TEST(JsonlPage, LineSeparatorsInStringsEndARecordToo) {
  expectBlocks("[\"a\xE2\x80\xA8z\"]\n[1]", {"[\"a", "z\"]", "[\n  1\n]"});
  expectBlocks("[\"a\xC2\x85z\"]", {"[\"a", "z\"]"});
  expectBlocks("[\"a\\u2028z\"]", {"[\n  \"a\xE2\x80\xA8z\"\n]"});
}

TEST(JsonlPage, BlanksAroundARecordAreDropped) {
  expectBlocks(" \t[1]\t \n\xC2\xA0\xE2\x80\x83[2]\xE3\x80\x80\n  no record  ",
               {"[\n  1\n]", "[\n  2\n]", "no record"});
}

TEST(JsonlPage, WhatIsNoRecordIsShownAsItStands) {
  expectBlocks("12.50\n\"text\"\nnull\n{\"a\":\n[1] // one\n<b>&\n[1][2]",
               {"12.50", "\"text\"", "null", "{\"a\":", "[1] // one", "&lt;b&gt;&amp;", "[1][2]"});
  expectBlocks("[\"open\n\"]\"\n[1]", {"[\"open", "\"]\"", "[\n  1\n]"});
  expectBlocks(std::string_view("[\0]\n[1]", 7), {std::string("[\0]", 3), "[\n  1\n]"});
}

TEST(JsonlPage, AByteOrderMarkBeforeARecordIsSkipped) {
  expectBlocks("[1]\n \xEF\xBB\xBF[2]\n\xEF\xBB\xBF {}\n", {"[\n  1\n]", "[\n  2\n]", "{\n\n}"});
  expectBlocks("\xEF\xBB\xBF", {"\xEF\xBB\xBF"});
  expectBlocks("\xEF\xBB\xBFnone", {"\xEF\xBB\xBFnone"});
}

TEST(JsonlPage, AFileWithoutRecordsSaysSo) {
  for (const std::string_view text : {"", " ", "\n", "\t\r\n \f\v\n", "\xE2\x80\xA8\xC2\xA0"}) {
    expectBlocks(text, {});
  }
}

TEST(JsonlPage, AsTextIsOneBlock) {
  const auto expectText = [](std::string_view content, const std::string& text) {
    const std::string expected =
        buildCodePage("<pre><code class=\"language-json\">" + text + "</code></pre>", kBase, true);
    EXPECT_EQ(buildJSONLHTML(content, kFile, true, false), expected);
  };
  expectText("", "");
  expectText(" \n", " \n");
  expectText("{\"a\":\"<&>\\/\"}\r\n[ ]\n", "{\"a\":\"&lt;&amp;&gt;\\/\"}\r\n[ ]\n");
}

TEST(JsonlPage, LongRecordsAndManyRecordsAreShownAlike) {
  const std::string small = "{\"a\":[1,2]}";
  const std::string large = "[\"" + std::string(1000000, 'x') + "\"]";
  const std::string broken = "[\"" + std::string(1000000, 'y');
  std::vector<std::string> texts;
  std::string content;
  for (int i = 0; i < 5000; ++i) {
    content += small + "\n";
    texts.push_back("{\n  \"a\" : [\n    1,\n    2\n  ]\n}");
    if (i % 2000 != 0) continue;
    content += large + "\r\n" + broken + "\n";
    texts.push_back("[\n  \"" + std::string(1000000, 'x') + "\"\n]");
    texts.push_back(broken);
  }
  EXPECT_TRUE(formattedPage(content) == pageOfBlocks(texts));
}

// A second, slow implementation: by code points and with the slow formatter.

constexpr std::array<std::string_view, 7> kLineBreaks = {
    "\n", "\v", "\f", "\r", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
constexpr std::array<std::string_view, 4> kBlanks = {" ", "\t", "\xC2\xA0", "\xE2\x80\x83"};

template <std::size_t N>
std::size_t startsWithOne(std::string_view text, const std::array<std::string_view, N>& choices) {
  for (const std::string_view choice : choices) {
    if (text.starts_with(choice)) return choice.size();
  }
  return 0;
}

std::string naivelyShown(std::string line) {
  while (const std::size_t size = startsWithOne(line, kBlanks)) line.erase(0, size);
  for (bool found = true; found;) {
    found = false;
    for (const std::string_view blank : kBlanks) {
      if (!line.ends_with(blank)) continue;
      line.resize(line.size() - blank.size());
      found = true;
    }
  }
  if (const auto json = test::naiveFormattedJson(line)) return *json;
  std::string escapedLine;
  for (const char byte : line) {
    const std::string entity = byte == '&' ? "&amp;" : byte == '<' ? "&lt;" : "&gt;";
    escapedLine += byte == '&' || byte == '<' || byte == '>' ? entity : std::string(1, byte);
  }
  return escapedLine;
}

std::string naivePage(std::string_view content) {
  std::vector<std::string> texts;
  std::string line;
  const auto endLine = [&] {
    const std::string shown = naivelyShown(line);
    if (!shown.empty()) texts.push_back(shown);
    line.clear();
  };
  while (!content.empty()) {
    const std::size_t size = startsWithOne(content, kLineBreaks);
    if (size != 0) {
      endLine();
    } else {
      line += content[0];
    }
    content.remove_prefix(std::max<std::size_t>(size, 1));
  }
  endLine();
  return pageOfBlocks(texts);
}

TEST(JsonlPage, AgreesWithASlowBuilderOnAllShortTexts) {
  static constexpr std::array<std::string_view, 14> kPieces = {
      "[",        "]",  "{}", "\"",           "1",        ",", " ",
      "\xC2\xA0", "\n", "\r", "\xE2\x80\xA8", "\xC2\x85", "<", "\\"};
  for (std::size_t length = 0; length <= 4; ++length) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) count *= kPieces.size();
    for (std::size_t number = 0; number < count; ++number) {
      std::string text;
      for (std::size_t rest = number, i = 0; i < length; ++i, rest /= kPieces.size()) {
        text += kPieces[rest % kPieces.size()];
      }
      StringOutput out(0);
      writeJSONLHTML(out, text, kFile, false, true);
      ASSERT_EQ(out.take(), naivePage(text)) << text;
    }
  }
}

TEST(JsonlPage, AgreesWithASlowBuilderOnRandomRecords) {
  std::mt19937 random(5);
  for (int i = 0; i < 300; ++i) {
    std::string text;
    for (int record = 0; record < 20; ++record) {
      std::string json = test::randomJson(random);
      std::replace(json.begin(), json.end(), '\n', ' ');
      std::replace(json.begin(), json.end(), '\r', ' ');
      if (random() % 5 == 0) json.resize(json.find_last_of("[]{}\":,") + 1);
      text += json;
      text += kLineBreaks[random() % kLineBreaks.size()];
    }
    ASSERT_EQ(formattedPage(text), naivePage(text)) << text;
  }
}

}  // namespace
}  // namespace lumisk
