// The formatter beside a second implementation and another parser, on all short texts and on random
// documents, whole and damaged.

#include <gtest/gtest.h>

#include <array>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "core/json_format.h"
#include "json_testing.h"
#include "random_json.h"

namespace lumisk {
namespace {

using test::formattedJson;
using test::naiveFormattedJson;
using test::unescapedHtml;

TEST(JsonAgreement, ASlowFormatterOnAllShortTexts) {
  static constexpr std::string_view kAlphabet = "[]{}\",:01-.e+ \n\\ut&";
  for (std::size_t length = 0; length <= 3; ++length) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) count *= kAlphabet.size();
    for (std::size_t number = 0; number < count; ++number) {
      std::string text;
      for (std::size_t rest = number, i = 0; i < length; ++i, rest /= kAlphabet.size()) {
        text += kAlphabet[rest % kAlphabet.size()];
      }
      for (const std::string& document : {text, "[" + text + "]", "{\"\":" + text + "}",
                                          "[\"" + text + "\"]", "{" + text + "}"}) {
        ASSERT_EQ(formattedJson(document), naiveFormattedJson(document)) << document;
      }
    }
  }
}

TEST(JsonAgreement, ASlowFormatterOnAllShortRunsOfTokens) {
  static constexpr std::array<std::string_view, 10> kTokens = {"[", "]", "{",     "}",    ",",
                                                               ":", " ", "\"a\"", "1.50", "true"};
  for (std::size_t length = 1; length <= 5; ++length) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) count *= kTokens.size();
    for (std::size_t number = 0; number < count; ++number) {
      std::string text;
      for (std::size_t rest = number, i = 0; i < length; ++i, rest /= kTokens.size()) {
        text += kTokens[rest % kTokens.size()];
      }
      ASSERT_EQ(formattedJson(text), naiveFormattedJson(text)) << text;
      const std::string member = "{\"a\":" + text + "}";
      ASSERT_EQ(formattedJson(member), naiveFormattedJson(member)) << member;
    }
  }
}

/// The events of a document, numbers by value.
class Events : public nlohmann::json_sax<nlohmann::json> {
 public:
  bool null() override { return add("null"); }
  bool boolean(bool value) override { return add(value ? "true" : "false"); }
  bool number_integer(std::int64_t value) override { return number(static_cast<double>(value)); }
  bool number_unsigned(std::uint64_t value) override { return number(static_cast<double>(value)); }
  bool number_float(double value, const std::string&) override { return number(value); }
  bool string(std::string& value) override { return add("s" + value); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return add("{"); }
  bool key(std::string& value) override { return add("k" + value); }
  bool end_object() override { return add("}"); }
  bool start_array(std::size_t) override { return add("["); }
  bool end_array() override { return add("]"); }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
    return false;
  }

  static std::optional<std::vector<std::string>> of(const std::string& text) {
    Events events;
    if (!nlohmann::json::sax_parse(text, &events)) return std::nullopt;
    return events.events_;
  }

 private:
  bool number(double value) {
    return add("n" + nlohmann::json(value == 0 ? 0.0 : value).dump());  // -0 as integer is 0
  }
  bool add(std::string event) {
    events_.push_back(std::move(event));
    return true;
  }
  std::vector<std::string> events_;
};

TEST(JsonAgreement, MeansTheSameToAnotherParser) {
  std::mt19937 random(99);
  int compared = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::string document = test::randomJson(random);
    const auto shown = formattedJson(document);
    ASSERT_NE(shown, std::nullopt) << document;
    const auto expected = Events::of(document);
    if (!expected) continue;  // that parser refuses numbers too large for a double
    ++compared;
    ASSERT_EQ(Events::of(unescapedHtml(*shown)), expected) << document;
  }
  EXPECT_GT(compared, 10000);
}

TEST(JsonAgreement, FormattingAgainChangesNothing) {
  std::mt19937 random(100);
  for (int i = 0; i < 20000; ++i) {
    const std::string document = test::randomJson(random);
    const auto once = formattedJson(document);
    ASSERT_EQ(once, naiveFormattedJson(document)) << document;
    ASSERT_EQ(formattedJson(unescapedHtml(*once)), once) << document;
  }
}

TEST(JsonAgreement, AnotherParserAboutDamagedDocuments) {
  std::mt19937 random(101);
  static constexpr std::string_view kBytes = "[]{}\",:0123456789-.eE+ \n\\utrfalsn&<\x01\x1f\x7f";
  for (int i = 0; i < 40000; ++i) {
    std::string document = test::randomJson(random);
    const std::size_t at = random() % document.size();
    if (static_cast<unsigned char>(document[at]) >= 0x80) continue;
    document[at] = kBytes[random() % kBytes.size()];
    const auto shown = formattedJson(document);
    ASSERT_EQ(shown, naiveFormattedJson(document)) << document;
    const bool isList = document.find_first_of("[{") == document.find_first_not_of(" \n\r\t");
    const bool overflows =
        document.find('e') != std::string::npos || document.find('E') != std::string::npos;
    if (!overflows || shown == std::nullopt) {
      ASSERT_EQ(isList && nlohmann::json::accept(document), shown != std::nullopt) << document;
    }
  }
}

}  // namespace
}  // namespace lumisk
