#include "core/escape.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/kernels/kernel_set.h"
#include "core/output.h"
#include "support/exact_memory.h"
#include "support/exact_output.h"
#include "support/generated_text.h"

namespace lumisk {
namespace {

constexpr Escaping kBoth[] = {Escaping::Html, Escaping::AngleBracketsOnly};

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t at = 0;
  for (std::size_t found; (found = text.find(from, at)) != std::string::npos;) {
    result.append(text, at, found - at).append(to);
    at = found + from.size();
  }
  text = result.append(text, at);
}

/// The rule as it is told: whole-text replacements, the ampersand first.
std::string replaced(std::string_view input, Escaping escaping) {
  std::string text(input);
  if (escaping == Escaping::Html) replaceAll(text, "&", "&amp;");
  replaceAll(text, "<", "&lt;");
  replaceAll(text, ">", "&gt;");
  return text;
}

std::string unescaped(std::string text) {
  replaceAll(text, "&lt;", "<");
  replaceAll(text, "&gt;", ">");
  replaceAll(text, "&amp;", "&");
  return text;
}

/// Runs one kernel through rooms of `room` bytes, each an allocation of its own.
std::string escapedBy(const KernelSet& set, const ExactCopy& input, Escaping escaping,
                      std::size_t room = kEscapeRoom) {
  EscapeKernel* kernel = escaping == Escaping::Html ? set.escapeMarkup : set.escapeAngleBrackets;
  std::string text;
  const char* in = input.begin();
  while (in != input.end()) {
    const auto window = std::make_unique_for_overwrite<char[]>(room);
    const KernelProgress progress = kernel(in, input.end(), window.get(), window.get() + room);
    if (progress.in == in) return "no progress";
    text.append(window.get(), progress.out);
    in = progress.in;
  }
  return text;
}

struct EscapeRow {
  const char* label;
  const char* text;
  const char* html;
  const char* angleBracketsOnly;
};

const EscapeRow kRows[] = {
    {"empty", "", "", ""},
    {"ampersand", "&", "&amp;", "&"},
    {"less than", "<", "&lt;", "&lt;"},
    {"greater than", ">", "&gt;", "&gt;"},
    {"all three", "<&>", "&lt;&amp;&gt;", "&lt;&&gt;"},
    {"entity in the text", "&lt;", "&amp;lt;", "&lt;"},
    {"quotes", "'\"' \"it's\"", "'\"' \"it's\"", "'\"' \"it's\""},
    {"condition", "a < b && c > d", "a &lt; b &amp;&amp; c &gt; d", "a &lt; b && c &gt; d"},
    {"neighbours in ASCII", "%&';:=?", "%&amp;';:=?", "%&';:=?"},
    {"line breaks", "a\r\nb\rc\xC2\x85\xE2\x80\xA8", "a\r\nb\rc\xC2\x85\xE2\x80\xA8",
     "a\r\nb\rc\xC2\x85\xE2\x80\xA8"},
    {"not ASCII", "\xC3\xA4<\xE2\x82\xAC&\xF0\x9F\x98\x80",
     "\xC3\xA4&lt;\xE2\x82\xAC&amp;\xF0\x9F\x98\x80", "\xC3\xA4&lt;\xE2\x82\xAC&\xF0\x9F\x98\x80"},
};

TEST(Escape, ReplacesTheCharactersOfItsVariantOnly) {
  for (const EscapeRow& row : kRows) {
    EXPECT_EQ(escaped(row.text, Escaping::Html), row.html) << row.label;
    EXPECT_EQ(escaped(row.text, Escaping::AngleBracketsOnly), row.angleBracketsOnly) << row.label;
  }
}

TEST(Escape, PassesEveryOtherByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(70, static_cast<char>(byte));
    for (const Escaping escaping : kBoth) {
      EXPECT_EQ(escaped(text, escaping), replaced(text, escaping)) << byte;
    }
  }
}

TEST(Escape, TakesEveryShortTextAsTheReplacementsDo) {
  for (const std::string& text : allTexts("&<>;a", 6)) {
    for (const Escaping escaping : kBoth) {
      const std::string expected = replaced(text, escaping);
      ASSERT_EQ(escaped(text, escaping), expected) << text;
      ASSERT_EQ(escapedSize(text, escaping), expected.size()) << text;
    }
  }
}

TEST(Escape, IsUndoneByUnescaping) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size < 2000; size += 37) {
    const std::string text = randomText(random, "&<>;ampltgxyz \n\xFF", size);
    EXPECT_EQ(unescaped(escaped(text, Escaping::Html)), text);
  }
}

TEST(Escape, AppendsBehindWhatIsThere) {
  StringOutput out(0);
  out.append("<pre>");
  appendEscaped(out, "a<b", Escaping::Html);
  appendEscaped(out, "", Escaping::Html);
  appendEscaped(out, "&", Escaping::Html);
  out.append("</pre>");
  EXPECT_EQ(out.take(), "<pre>a&lt;b&amp;</pre>");
}

// The seams: a text that ends, or has its special characters, near where a window is full, and near
// where `escapedSize` starts its next part.
TEST(Escape, LosesNothingWhereWindowsMeet) {
  for (const std::size_t seam : {std::size_t{16384}, std::size_t{65536}, std::size_t{131072}}) {
    for (std::size_t before = 0; before <= 600; before += before < 80 ? 1 : 13) {
      std::string text(seam - before, 'x');
      text += repeated("&<>a", before / 2);
      text.append(700, 'y');
      ExactOutput out;
      appendEscaped(out, text, Escaping::Html);
      const std::string expected = replaced(text, Escaping::Html);
      ASSERT_TRUE(out.take() == expected) << seam << " " << before;
      ASSERT_EQ(escapedSize(text, Escaping::Html), expected.size());
    }
  }
}

TEST(Escape, FillsManyWindows) {
  std::mt19937 random(2);
  for (const std::string_view alphabet : {"&", "<x", "abcdefghijklmnopqrstuvwxyz \n&<>", "a"}) {
    const std::string text = randomText(random, alphabet, 300001);
    for (const Escaping escaping : kBoth) {
      ExactOutput out;
      appendEscaped(out, text, escaping);
      EXPECT_TRUE(out.take() == replaced(text, escaping)) << alphabet;
    }
  }
}

TEST(EscapeKernels, AgreeOnEveryLengthAndOffset) {
  std::mt19937 random(3);
  for (const KernelSet* set : runnableKernelSets()) {
    for (std::size_t size = 0; size <= 300; ++size) {
      const char* alphabet = size % 3 == 0   ? "&<>"
                             : size % 3 == 1 ? "abcdefgh&<>"
                                             : "abc\x80\xFF\0";
      const std::string text = randomText(random, alphabet, size);
      const ExactCopy input(text, size * 7 % 65);
      for (const Escaping escaping : kBoth) {
        ASSERT_EQ(escapedBy(*set, input, escaping), replaced(text, escaping)) << set->name;
      }
    }
  }
}

TEST(EscapeKernels, FindASpecialCharacterAtEveryPlace) {
  for (const KernelSet* set : runnableKernelSets()) {
    for (const char special : {'&', '<', '>'}) {
      for (std::size_t at = 0; at < 200; ++at) {
        std::string text(200, '=');
        text[at] = special;
        for (const Escaping escaping : kBoth) {
          ASSERT_EQ(escapedBy(*set, ExactCopy(text), escaping), replaced(text, escaping))
              << set->name << " " << at;
        }
      }
    }
  }
}

TEST(EscapeKernels, StayInTheirRoomWhateverItsSize) {
  std::mt19937 random(4);
  for (const KernelSet* set : runnableKernelSets()) {
    for (std::size_t room = kEscapeRoom; room < kEscapeRoom + 200; ++room) {
      const ExactCopy input(randomText(random, "&&&<>abcd", 3000));
      ASSERT_EQ(escapedBy(*set, input, Escaping::Html, room),
                replaced(input.text(), Escaping::Html))
          << set->name << " " << room;
    }
  }
}

TEST(CountKernels, CountEitherByteOnce) {
  std::mt19937 random(5);
  for (const KernelSet* set : runnableKernelSets()) {
    for (std::size_t size = 0; size <= 300; ++size) {
      const ExactCopy input(randomText(random, "<>=\xBC\xBE a", size), size * 5 % 65);
      std::size_t expected = 0;
      for (const char c : input.text()) expected += c == '<' || c == '>' ? 1 : 0;
      ASSERT_EQ(set->countEither(input.begin(), input.end(), '<', '>'), expected) << set->name;
      ASSERT_EQ(set->countEither(input.begin(), input.end(), 'a', 'a'),
                static_cast<std::size_t>(std::count(input.begin(), input.end(), 'a')));
    }
  }
}

TEST(KernelSets, StartWithThePortableOneAndAreChosenFromTheList) {
  const auto sets = runnableKernelSets();
  ASSERT_FALSE(sets.empty());
  EXPECT_STREQ(sets.front()->name, "portable");
  EXPECT_EQ(&kernels(), sets.back());
}

}  // namespace
}  // namespace lumisk
