#include "core/json_format.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/output.h"
#include "json_testing.h"

namespace lumisk {
namespace {

using test::formattedJson;
using test::naiveFormattedJson;

struct Row {
  std::string label;
  std::string text;
  std::string shown;
};

void expectShown(const std::vector<Row>& rows) {
  for (const auto& [label, text, shown] : rows) {
    EXPECT_EQ(formattedJson(text).value_or("no JSON"), shown) << label;
  }
}

/// Rows for what stands in an array by itself.
void expectItemShown(const std::vector<Row>& rows) {
  for (const auto& [label, text, shown] : rows) {
    EXPECT_EQ(formattedJson("[" + text + "]").value_or("no JSON"), "[\n  " + shown + "\n]")
        << label;
  }
}

void expectRejected(const std::vector<std::pair<std::string, std::string>>& rows) {
  for (const auto& [label, text] : rows) {
    EXPECT_EQ(formattedJson(text), std::nullopt) << label;
    EXPECT_EQ(naiveFormattedJson(text), std::nullopt) << label;
  }
}

std::string nested(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JsonFormat, LaysOutOneItemALine) {
  const std::string shown =
      "{\n"
      "  \"a\" : [\n"
      "    1,\n"
      "    \"x/y\"\n"
      "  ],\n"
      "  \"b\" : {\n"
      "\n"
      "  }\n"
      "}";
  expectShown({
      {"compact", R"({"a":[1.0,"x\/y"],"b":{}})", shown},
      {"blanks everywhere", "\t\r\n { \"a\" : [ 1.0 ,\r\n\r\n \"x\\/y\"\t] , \"b\"\n:\n{ \n } } \n",
       shown},
      {"already laid out", shown, shown},
      {"byte-order mark", "\xEF\xBB\xBF{\"a\":[1.0,\"x\\/y\"],\"b\":{}}", shown},
      {"byte-order mark, then blanks", "\xEF\xBB\xBF \n" + shown + "\n", shown},
  });
}

TEST(JsonFormat, EmptyContainersHoldAnEmptyLine) {
  expectShown({
      {"array", "[]", "[\n\n]"},
      {"object", "{}", "{\n\n}"},
      {"blanks inside", "[ \n\t ]", "[\n\n]"},
      {"nested", "[[],{}]", "[\n  [\n\n  ],\n  {\n\n  }\n]"},
      {"as a member", "{\"a\":[]}", "{\n  \"a\" : [\n\n  ]\n}"},
      {"deeper", "[[[]]]", "[\n  [\n    [\n\n    ]\n  ]\n]"},
  });
}

TEST(JsonFormat, KeepsMembersInOrderAndEachTime) {
  expectShown(
      {{"repeated", R"({"b":1,"a":2,"b":3})", "{\n  \"b\" : 1,\n  \"a\" : 2,\n  \"b\" : 3\n}"},
       {"empty name", R"({"":null})", "{\n  \"\" : null\n}"},
       {"names are escaped too", R"({"<\u0026\n":true})", "{\n  \"&lt;&amp;\\n\" : true\n}"}});
}

TEST(JsonFormat, WritesStringsWithTheFewestEscapes) {
  expectItemShown({
      {"slash", R"("a\/b/c")", R"("a/b/c")"},
      {"quote and backslash", R"("\"\\")", R"("\"\\")"},
      {"short forms", R"("\b\f\n\r\t")", R"("\b\f\n\r\t")"},
      {"short forms from long", R"("\u0008\u000c\u000a\u000D\u0009")", R"("\b\f\n\r\t")"},
      {"quote and backslash from long", R"("\u0022\u005c\u005C")", R"("\"\\\\")"},
      {"slash from long", R"("\u002f")", R"("/")"},
      {"controls", R"("\u0000\u0001\u000B\u001f\u001B")", R"("\u0000\u0001\u000b\u001f\u001b")"},
      {"letters", R"("\u0041\u00e9\u00E9\u6f22")", "\"Aéé漢\""},
      {"delete",
       R"("\u007f)"
       "\x7f\"",
       "\"\x7f\x7f\""},
      {"first of two bytes", R"("\u0080")", "\"\xC2\x80\""},
      {"last of two bytes", R"("\u07ff")", "\"\xDF\xBF\""},
      {"first of three bytes", R"("\u0800")", "\"\xE0\xA0\x80\""},
      {"last before the surrogates", R"("\ud7ff")", "\"\xED\x9F\xBF\""},
      {"first after the surrogates", R"("\ue000")", "\"\xEE\x80\x80\""},
      {"last of three bytes", R"("\uffff")", "\"\xEF\xBF\xBF\""},
      {"line separators", "\"\\u2028\xE2\x80\xA8\\u2029\"",
       "\"\xE2\x80\xA8\xE2\x80\xA8\xE2\x80\xA9\""},
      {"surrogate pair", R"("\ud83d\ude00\uD83D\uDE00")", "\"😀😀\""},
      {"first pair", R"("\ud800\udc00")", "\"\xF0\x90\x80\x80\""},
      {"last pair", R"("\udbff\udfff")", "\"\xF4\x8F\xBF\xBF\""},
      {"not ASCII", "\"é漢😀\xEF\xBB\xBF\"", "\"é漢😀\xEF\xBB\xBF\""},
      {"looks like an escape", R"("\\u0041\\n")", R"("\\u0041\\n")"},
  });
}

TEST(JsonFormat, EscapesForHtml) {
  expectItemShown({
      {"each", R"("&<>")", R"("&amp;&lt;&gt;")"},
      {"from escapes", R"("\u0026\u003c\u003e")", R"("&amp;&lt;&gt;")"},
      {"an entity", R"("&lt;")", R"("&amp;lt;")"},
      {"quotes stay", R"("'\"")", R"("'\"")"},
      {"many", "\"" + std::string(100, '&') + "\"",
       [] {
         std::string shown = "\"";
         for (int i = 0; i < 100; ++i) shown += "&amp;";
         return shown + "\"";
       }()},
  });
}

TEST(JsonFormat, KeepsTheDigitsOfIntegers) {
  for (const std::string& number : std::vector<std::string>{
           "0", "-0", "7", "-12", "12345678901234567890", "18446744073709551616",
           "-99999999999999999999999999999999999999999999999999", std::string(100000, '9')}) {
    expectItemShown({{number.substr(0, 60), number, number}});
  }
}

TEST(JsonFormat, WritesOtherNumbersShort) {
  expectItemShown({
      {"no fraction left", "3.0", "3"},
      {"minus zero", "-0.0", "-0"},
      {"trailing zero", "2.50", "2.5"},
      {"small", "1E-7", "1e-07"},
      {"written out", "1e2", "100"},
      {"large", "1e16", "1e+16"},
      {"too large", "1e400", "1e400"},
      {"too large, as written", "-1.50E+0400", "-1.50E+0400"},
      {"too long", "0.123456789012345678", "0.123456789012345678"},
      {"long and zero", "0." + std::string(200000, '0'), "0"},
      {"very long", "1." + std::string(200000, '0'), "1." + std::string(200000, '0')},
  });
}

TEST(JsonFormat, AcceptsWhatTheGrammarAllows) {
  for (const std::string text :
       {"[true,false,null]", "[\"\"]", "{\"a\":{\"b\":[0.5e+1,-1e-1]}}", "[1]\r\n\t ", "[\"\x7f\"]",
        "[\"\\ud800\\udc00\"]", "[0e0]", "[-0]", "[[[[]]],{}]", "\n[1]"}) {
    EXPECT_NE(formattedJson(text), std::nullopt) << text;
    EXPECT_EQ(formattedJson(text), naiveFormattedJson(text)) << text;
  }
}

TEST(JsonFormat, RejectsWhatIsNoDocument) {
  expectRejected({
      {"empty", ""},
      {"blanks", " \n\t\r "},
      {"byte-order mark alone", "\xEF\xBB\xBF"},
      {"two byte-order marks", "\xEF\xBB\xBF\xEF\xBB\xBF[]"},
      {"byte-order mark after a blank", " \xEF\xBB\xBF[]"},
      {"byte-order mark at the end", "[]\xEF\xBB\xBF"},
      {"half a byte-order mark", "\xEF\xBB[]"},
      {"number", "1"},
      {"string", "\"a\""},
      {"string that ends in a bracket", "\"a]"},
      {"word", "true"},
      {"word before a bracket", "null]"},
      {"closing bracket alone", "]"},
      {"closing brace alone", "}"},
      {"two documents", "[][]"},
      {"two documents with a comma", "[],[]"},
      {"text behind", "[] x"},
      {"bracket behind", "[]]"},
      {"comment behind", "[] // ]"},
      {"NUL behind", std::string("[]\0", 3)},
      {"NUL before", std::string("\0[]", 3)},
      {"form feed as a blank", "[\f]"},
      {"vertical tab as a blank", "[1,\v2]"},
      {"no-break space as a blank", "[\xC2\xA0]"},
      {"NUL as a blank", std::string("[\0]", 3)},
  });
}

TEST(JsonFormat, RejectsBrokenContainers) {
  expectRejected({
      {"open array", "["},
      {"open object", "{"},
      {"open in open", "[[]"},
      {"open object, array closed", "{]"},
      {"array closed as object", "[}"},
      {"crossed", "[{]}"},
      {"crossed and complete", "{\"a\":[}]"},
      {"trailing comma", "[1,]"},
      {"trailing comma in an object", "{\"a\":1,}"},
      {"leading comma", "[,1]"},
      {"leading comma in an object", "{,\"a\":1}"},
      {"two commas", "[1,,2]"},
      {"comma alone", "[,]"},
      {"no comma", "[1 2]"},
      {"no comma between strings", "[\"a\"\"b\"]"},
      {"no comma between members", "{\"a\":1 \"b\":2}"},
      {"name alone", "{\"a\"}"},
      {"name and colon", "{\"a\":}"},
      {"two colons", "{\"a\"::1}"},
      {"comma for a colon", "{\"a\",1}"},
      {"colon in an array", "[\"a\":1]"},
      {"value for a name", "{1:1}"},
      {"word for a name", "{null:1}"},
      {"bare name", "{a:1}"},
      {"value alone", "{1}"},
      {"array as name", "{[]:1}"},
      {"single quotes", "{'a':1}"},
      {"comment", "[/* */]"},
      {"line comment", "[1 // one\n]"},
  });
}

TEST(JsonFormat, RejectsBrokenStrings) {
  expectRejected({
      {"open", "[\"a]"},
      {"open name", "{\"a}"},
      {"ends in a backslash", "[\"a\\"},
      {"backslash before the bracket", "[\"a\\]"},
      {"quote escaped", "[\"a\\\"]"},
      {"line feed", "[\"a\nb\"]"},
      {"tab", "[\"\t\"]"},
      {"NUL", std::string("[\"\0\"]", 5)},
      {"control far inside",
       "[\"" + std::string(100, 'x') + "\x1f" + std::string(100, 'x') + "\"]"},
      {"unknown escape", "[\"\\x41\"]"},
      {"upper-case escape", "[\"\\N\"]"},
      {"upper-case long escape", "[\"\\U0041\"]"},
      {"escaped single quote", "[\"\\'\"]"},
      {"escaped line feed", "[\"\\\n\"]"},
      {"three digits", "[\"\\u004\"]"},
      {"no digits", "[\"\\u\"]"},
      {"a letter too far", "[\"\\u004g\"]"},
      {"sign as digit", "[\"\\u-041\"]"},
      {"blank as digit", "[\"\\u 041\"]"},
      {"cut in the escape", "[\"\\u00]"},
      {"high surrogate alone", "[\"\\ud83d\"]"},
      {"high surrogate, then text", "[\"\\ud83dabcdefgh\"]"},
      {"high surrogate, then another escape", "[\"\\ud83d\\n12345\"]"},
      {"two high surrogates", "[\"\\ud83d\\ud83d\"]"},
      {"high surrogate, then a letter", "[\"\\ud83d\\u0041\"]"},
      {"low surrogate alone", "[\"\\ude00\"]"},
      {"pair in the wrong order", "[\"\\ude00\\ud83d\"]"},
      {"low surrogate cut", "[\"\\ud83d\\ude0\"]"},
  });
}

TEST(JsonFormat, RejectsWhatIsNoValue) {
  std::vector<std::string> values = {
      "+1",    "01",  "-",   "-01",       "1.",   ".5",   "1e",    "1e+",       "0x1",  "1_0",
      "1e1.5", "--1", "NaN", "-Infinity", "True", "nul",  "nulll", "truefalse", "tru",  "undefined",
      "'a'",   "1a",  "0 1", "\\",        "-a",   "1.e1", "٣",     "1,\"",      "fals", "falsey"};
  for (const std::string& value : values) {
    expectRejected({{value, "[" + value + "]"}, {value, "{\"a\":" + value + "}"}});
  }
}

TEST(JsonFormat, EveryPrefixOfADocumentIsRejected) {
  const std::string document =
      "{\"name\" : \"x\\u00e9\\ud83d\\ude00<&>\\n\", \"list\":[1,-2.50e+3,true,false,null,[],{}],\n"
      "  \"deep\":{\"a\":{\"b\":[[[\"end\"]]]}}, \"long\":\"" +
      std::string(100, 'y') + "\"}";
  ASSERT_NE(formattedJson(document), std::nullopt);
  for (std::size_t size = 0; size < document.size(); ++size) {
    EXPECT_EQ(formattedJson(document.substr(0, size)), std::nullopt) << size;
  }
}

TEST(JsonFormat, EveryByteInEveryPlace) {
  const std::string document = "{\"k\":[1.5,\"aé\\n\\u0041\",true]}";
  for (std::size_t at = 0; at < document.size(); ++at) {
    for (int byte = 0; byte < 0x80; ++byte) {
      std::string changed = document;
      changed[at] = static_cast<char>(byte);
      ASSERT_EQ(formattedJson(changed), naiveFormattedJson(changed)) << changed;
    }
  }
}

TEST(JsonFormat, NestsToTheLimitAndNoDeeper) {
  for (const std::size_t depth : {1U, 15U, 16U, 17U, 511U, 512U}) {
    EXPECT_EQ(formattedJson(nested(depth)), naiveFormattedJson(nested(depth))) << depth;
    EXPECT_NE(formattedJson(nested(depth)), std::nullopt) << depth;
  }
  EXPECT_EQ(formattedJson(nested(513)), std::nullopt);
  EXPECT_EQ(formattedJson(nested(1000000)), std::nullopt);
  EXPECT_EQ(formattedJson("[" + nested(511) + "," + nested(512) + "]"), std::nullopt);
}

TEST(JsonFormat, ManyContainersSideBySideAreNotDeep) {
  std::string text = "[" + nested(511);
  for (int i = 0; i < 100; ++i) text += "," + nested(511);
  EXPECT_EQ(formattedJson(text + "]"), naiveFormattedJson(text + "]"));
}

TEST(JsonFormat, RejectsHostileInput) {
  constexpr std::size_t kSize = 1000000;
  expectRejected({{"closing brackets", std::string(kSize, ']')},
                  {"NULs", std::string(kSize, '\0')},
                  {"digits", std::string(kSize, '1')},
                  {"quotes", std::string(kSize, '"')}});
  std::string objects;
  for (std::size_t i = 0; i < kSize / 5; ++i) objects += "{\"a\":";
  EXPECT_EQ(formattedJson(objects), std::nullopt);
  EXPECT_EQ(formattedJson(objects + "}"), std::nullopt);
  EXPECT_EQ(formattedJson(std::string(kSize, '[')), std::nullopt);
  EXPECT_EQ(formattedJson(std::string(kSize, '[') + "]"), std::nullopt);
  EXPECT_EQ(formattedJson("[" + std::string(kSize, '1')), std::nullopt);
  EXPECT_EQ(formattedJson("[\"" + std::string(kSize, ']')), std::nullopt);
  EXPECT_EQ(formattedJson("[" + std::string(kSize, ' ') + "]"), "[\n\n]");
}

TEST(JsonFormat, TheEdgeOfTheWindowIsNowhereVisible) {
  const std::string body =
      R"("text <&> \u0001\ud83d\ude00",-1.250,12345678901234567890,{"k":[[[]]],"l":{}},true,null)";
  const std::string shownBody = naiveFormattedJson("[" + body + "]")->substr(1);
  const std::size_t last = Output::kMaxRoom + 64;
  for (std::size_t size = last - 5000; size < last; size += 7) {
    const std::string filler(size, 'f');
    const auto shown = formattedJson("[\"" + filler + "\"," + body + "]");
    ASSERT_EQ(shown, "[\n  \"" + filler + "\"," + shownBody) << size;
  }
}

TEST(JsonFormat, DeepLinesCrossTheWindowToo) {
  std::string text = nested(512);
  for (int i = 0; i < 300; ++i)
    text.insert(512, std::string(static_cast<std::size_t>(i % 7) + 1, '1') + ",");
  text.insert(812, "1");
  const auto expected = naiveFormattedJson(text);
  EXPECT_EQ(formattedJson(text), expected);
}

}  // namespace
}  // namespace lumisk
