#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "platform/headless/string_table.h"
#include "support/files.h"
#include "test_environment.h"

// What the catalogues must have for the program to be whole in each language.

namespace lumisk {
namespace {

using test::ScopedVariable;

std::vector<std::string> languages() {
  std::ifstream list(LUMISK_PO "/LINGUAS");
  std::vector<std::string> names;
  for (std::string line; std::getline(list, line);) names.push_back(line);
  return names;
}

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// The one conversion that the text for `key` must have; empty if it must have none.
std::string conversionOf(std::string_view key) {
  if (key == "folder.items" || key == "folder.items.hidden") return "%lld";
  return key == "folder.modified" ? "%s" : "";
}

void expectConversion(const std::string& text, std::string_view key) {
  const std::string conversion = conversionOf(key);
  EXPECT_EQ(countOf(text, "%"), conversion.empty() ? 0U : 1U) << text;
  if (!conversion.empty()) {
    EXPECT_EQ(countOf(text, conversion), 1U) << text;
  }
}

/// The texts of one catalogue's source for one key, a text a plural form.
std::vector<std::string> textsOf(const std::string& catalogue, std::string_view key) {
  const std::string head = "msgid \"" + std::string(key) + "\"\n";
  const std::size_t begin = catalogue.find(head);
  if (begin == std::string::npos) return {};
  const std::string entry = catalogue.substr(begin, catalogue.find("\n\n", begin) - begin);
  const std::regex line("\nmsgstr(\\[\\d\\])? \"([^\n]*)\"");
  std::vector<std::string> texts;
  for (std::sregex_iterator at(entry.begin(), entry.end(), line), end; at != end; ++at) {
    texts.push_back((*at)[2]);
  }
  return texts;
}

std::size_t pluralFormsOf(const std::string& catalogue) {
  std::smatch found;
  if (!std::regex_search(catalogue, found, std::regex("nplurals=(\\d+)"))) return 0;
  return std::stoul(found[1]);
}

TEST(Catalogues, ThereIsOneForEachLanguageOfTheProgram) {
  const std::vector<std::string> expected = {"ar", "de", "en", "es",    "fr", "hi",   "it",
                                             "ja", "ko", "pl", "pt_BR", "ru", "zh_CN"};
  EXPECT_EQ(languages(), expected);
}

TEST(Catalogues, EachIsWhole) {
  for (const std::string& language : languages()) {
    SCOPED_TRACE(language);
    const std::string catalogue = test::readAll(LUMISK_PO "/" + language + ".po");
    EXPECT_EQ(countOf(catalogue, "fuzzy"), 0U);
    EXPECT_EQ(countOf(catalogue, "\"Language: " + language + "\\n\""), 1U);
    const std::size_t forms = pluralFormsOf(catalogue);
    EXPECT_GE(forms, 1U);
    for (const EnglishText& english : englishTexts()) {
      const std::vector<std::string> texts = textsOf(catalogue, english.key);
      EXPECT_EQ(texts.size(), english.plural.empty() ? 1U : forms) << english.key;
      for (const std::string& text : texts) {
        EXPECT_FALSE(text.empty()) << english.key;
        expectConversion(text, english.key);
      }
    }
    EXPECT_EQ(countOf(catalogue, "msgid \""), englishTexts().size() + 1) << "keys nobody asks for";
  }
}

TEST(Catalogues, TheEnglishOneSaysWhatTheProgramSaysWithoutAny) {
  const std::string catalogue = test::readAll(LUMISK_PO "/en.po");
  for (const EnglishText& english : englishTexts()) {
    std::vector<std::string> expected = {std::string(english.singular)};
    if (!english.plural.empty()) expected.emplace_back(english.plural);
    EXPECT_EQ(textsOf(catalogue, english.key), expected);
  }
}

class CataloguesInLocales : public test::WithLocales {};

TEST_F(CataloguesInLocales, EveryCountHasATextWithItsNumber) {
  const GettextStringTable strings("de_DE.UTF-8", LUMISK_CATALOGUES);
  for (const std::string& language : languages()) {
    SCOPED_TRACE(language);
    const ScopedVariable variable("LANGUAGE", language.c_str());
    for (std::int64_t count = 0; count <= 250; ++count) {
      expectConversion(strings.pluralText("folder.items", count).value_or("%%"), "folder.items");
      expectConversion(strings.pluralText("folder.items.hidden", count).value_or("%%"),
                       "folder.items.hidden");
    }
  }
}

TEST_F(CataloguesInLocales, EachLanguageHasTextsOfItsOwn) {
  const GettextStringTable strings("de_DE.UTF-8", LUMISK_CATALOGUES);
  std::vector<std::string> seen;
  for (const std::string& language : languages()) {
    const ScopedVariable variable("LANGUAGE", language.c_str());
    seen.push_back(strings.text("folder.empty").value_or(""));
  }
  std::ranges::sort(seen);
  EXPECT_EQ(std::ranges::adjacent_find(seen), seen.end());
}

}  // namespace
}  // namespace lumisk
