#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/headless/string_table.h"
#include "support/catalogue.h"
#include "test_environment.h"

// What the catalogues must have for the program to be whole in each language.

namespace lumisk {
namespace {

using test::Catalogue;
using test::countOf;
using test::ScopedVariable;

std::vector<std::string> languages() { return test::catalogueLanguages(LUMISK_PO); }

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

TEST(Catalogues, ThereIsOneForEachLanguageOfTheProgram) {
  const std::vector<std::string> expected = {"ar", "de", "en", "es",    "fr", "hi",   "it",
                                             "ja", "ko", "pl", "pt_BR", "ru", "zh_CN"};
  EXPECT_EQ(languages(), expected);
}

TEST(Catalogues, EachIsWhole) {
  for (const std::string& language : languages()) {
    SCOPED_TRACE(language);
    const Catalogue catalogue(LUMISK_PO, language);
    EXPECT_EQ(countOf(catalogue.source(), "fuzzy"), 0U);
    EXPECT_EQ(countOf(catalogue.source(), "\"Language: " + language + "\\n\""), 1U);
    const std::size_t forms = catalogue.pluralForms();
    EXPECT_GE(forms, 1U);
    for (const EnglishText& english : englishTexts()) {
      const std::vector<std::string> texts = catalogue.textsOf(english.key);
      EXPECT_EQ(texts.size(), english.plural.empty() ? 1U : forms) << english.key;
      for (const std::string& text : texts) {
        EXPECT_FALSE(text.empty()) << english.key;
        expectConversion(text, english.key);
      }
    }
  }
}

TEST(Catalogues, TheEnglishOneSaysWhatTheProgramSaysWithoutAny) {
  const Catalogue catalogue(LUMISK_PO, "en");
  for (const EnglishText& english : englishTexts()) {
    std::vector<std::string> expected = {std::string(english.singular)};
    if (!english.plural.empty()) expected.emplace_back(english.plural);
    EXPECT_EQ(catalogue.textsOf(english.key), expected);
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
