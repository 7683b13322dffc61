#include <gtest/gtest.h>
#include <libintl.h>
#include <stdlib.h>

#include <algorithm>
#include <clocale>
#include <set>
#include <string>
#include <vector>

#include "desktop/texts.h"
#include "platform/headless/string_table.h"
#include "support/catalogue.h"

// The panel speaks each of the program's languages: what is missing in one of them fails here.

namespace lumisk::desktop {
namespace {

using test::Catalogue;
using test::catalogueLanguages;
using test::countOf;

/// The one slot of the text, which its translations must have too; empty if it has none.
std::string slotOf(const PanelText& text) {
  const std::string english = text.singular;
  if (english.find("%lld") != std::string::npos) return "%lld";
  return english.find("%s") != std::string::npos ? "%s" : "";
}

TEST(PanelTexts, EachLanguageHasThemAll) {
  ASSERT_EQ(catalogueLanguages(LUMISK_PO).size(), 13U);
  for (const std::string& language : catalogueLanguages(LUMISK_PO)) {
    const Catalogue catalogue(LUMISK_PO, language);
    for (const PanelText& text : kPanelTexts) {
      SCOPED_TRACE(language + ' ' + text.key);
      const std::vector<std::string> texts = catalogue.textsOf(text.key);
      EXPECT_EQ(texts.size(), text.plural == nullptr ? 1U : catalogue.pluralForms());
      for (const std::string& translation : texts) {
        EXPECT_FALSE(translation.empty());
        EXPECT_EQ(countOf(translation, "%"), slotOf(text).empty() ? 0U : 1U) << translation;
        EXPECT_NE(translation.find(slotOf(text)), std::string::npos) << translation;
      }
    }
  }
}

TEST(PanelTexts, AreTranslatedAndNotCopied) {
  // Words may be the same in two languages ("Document"), sentences are not.
  for (const std::string& language : catalogueLanguages(LUMISK_PO)) {
    if (language == "en") continue;
    const Catalogue catalogue(LUMISK_PO, language);
    for (const PanelText& text : kPanelTexts) {
      const std::string english = text.singular;
      if (english.find(' ') == std::string::npos) continue;
      for (const std::string& translation : catalogue.textsOf(text.key))
        EXPECT_NE(translation, english) << language << ' ' << text.key;
    }
  }
}

TEST(PanelTexts, TheEnglishCatalogueSaysWhatTheProgramSaysWithoutAny) {
  const Catalogue catalogue(LUMISK_PO, "en");
  for (const PanelText& text : kPanelTexts) {
    std::vector<std::string> expected = {text.singular};
    if (text.plural != nullptr) expected.emplace_back(text.plural);
    EXPECT_EQ(catalogue.textsOf(text.key), expected);
  }
}

TEST(PanelTexts, NoCatalogueHasAKeyThatNobodyAsksFor) {
  std::multiset<std::string> asked;
  for (const PanelText& text : kPanelTexts) asked.insert(text.key);
  for (const EnglishText& text : englishTexts()) asked.emplace(text.key);
  for (const std::string& language : catalogueLanguages(LUMISK_PO)) {
    const std::vector<std::string> keys = Catalogue(LUMISK_PO, language).keys();
    EXPECT_EQ(std::multiset<std::string>(keys.begin(), keys.end()), asked) << language;
  }
}

TEST(PanelTexts, EnglishNeedsNoCatalogue) {
  EXPECT_STREQ(tr("find.none"), "No matches");
  EXPECT_EQ(trWith("panel.open-with", "100 %s"), "Open With 100 %s");
  EXPECT_EQ(trCount("find.count", 1), "1 match");
  EXPECT_EQ(trCount("find.count", 0), "0 matches");
  EXPECT_EQ(trCount("find.count", 1200), "1200 matches");
}

/// In a language: any locale but "C" will do, LANGUAGE says which.
class PanelTextsIn : public testing::Test {
 protected:
  PanelTextsIn() {
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) skip_ = true;
    bindtextdomain("lumisk", LUMISK_CATALOGUES);
    bind_textdomain_codeset("lumisk", "UTF-8");
  }
  ~PanelTextsIn() override {
    unsetenv("LANGUAGE");
    std::setlocale(LC_ALL, "C");
  }
  void SetUp() override {
    if (skip_) GTEST_SKIP() << "no locale C.UTF-8";
  }
  static void speak(const char* language) {
    setenv("LANGUAGE", language, 1);
    std::setlocale(LC_ALL, "C");  // what was found for another language is forgotten
    std::setlocale(LC_ALL, "C.UTF-8");
  }

 private:
  bool skip_ = false;
};

TEST_F(PanelTextsIn, TheLanguageIsThePersons) {
  speak("de");
  EXPECT_STREQ(tr("find.none"), "Keine Treffer");
  EXPECT_EQ(trWith("panel.open-with", "Texteditor"), "Mit Texteditor öffnen");
  speak("sv:fr");
  EXPECT_STREQ(tr("panel.menu"), "Menu");
  EXPECT_STREQ(tr("command.page-up"), "Page précédente");
  speak("en:de");
  EXPECT_STREQ(tr("find.none"), "No matches");
}

TEST_F(PanelTextsIn, MatchesAreCountedAsTheLanguageCounts) {
  struct Row {
    const char* language;
    long long count;
    const char* text;
  };
  const Row rows[] = {
      {"pl", 1, "1 wynik"},        {"pl", 3, "3 wyniki"},       {"pl", 12, "12 wyników"},
      {"ru", 21, "21 совпадение"}, {"ru", 22, "22 совпадения"}, {"ru", 25, "25 совпадений"},
      {"ar", 2, "2 نتيجتان"},      {"ar", 7, "7 نتائج"},        {"ja", 5, "5 件一致"},
      {"fr", 1, "1 résultat"},     {"fr", 2, "2 résultats"},
  };
  for (const Row& row : rows) {
    speak(row.language);
    EXPECT_EQ(trCount("find.count", row.count), row.text) << row.language;
  }
}

}  // namespace
}  // namespace lumisk::desktop
