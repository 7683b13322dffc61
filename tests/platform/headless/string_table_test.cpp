#include "platform/headless/string_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/files.h"
#include "test_environment.h"

namespace lumisk {
namespace {

using test::ScopedVariable;
using test::TemporaryFolder;

TEST(GettextStringTable, EnglishNeedsNoCatalogue) {
  const TemporaryFolder nothing;
  const GettextStringTable strings("C", nothing.path());
  EXPECT_EQ(strings.text("preview.mode.rendered"), "Preview");
  EXPECT_EQ(strings.text("preview.mode.source"), "Raw Text");
  EXPECT_EQ(strings.text("preview.mode.formatted"), "Formatted");
  EXPECT_EQ(strings.pluralText("folder.items", 1), "%lld item");
  EXPECT_EQ(strings.pluralText("folder.items", 2), "%lld items");
  EXPECT_EQ(strings.pluralText("folder.items", 4'294'967'297), "%lld items");
}

TEST(GettextStringTable, UnknownKeysAreNothing) {
  const GettextStringTable strings("C", LUMISK_CATALOGUES);
  for (const char* key : {"", "folder", "folder.items ", "Preview"}) {
    EXPECT_EQ(strings.text(key), std::nullopt) << key;
    EXPECT_EQ(strings.pluralText(key, 2), std::nullopt) << key;
  }
}

TEST(GettextStringTable, TheCLocaleIsEnglishWhateverTheLanguageList) {
  const ScopedVariable language("LANGUAGE", "de");
  const GettextStringTable strings("C", LUMISK_CATALOGUES);
  EXPECT_EQ(strings.text("folder.empty"), "This folder is empty");
}

class GettextStringTableInLocales : public test::WithLocales {};

TEST_F(GettextStringTableInLocales, SpeaksTheLocalesLanguage) {
  EXPECT_EQ(GettextStringTable("de_DE.UTF-8", LUMISK_CATALOGUES).text("folder.empty"),
            "Dieser Ordner ist leer");
  EXPECT_EQ(GettextStringTable("ja_JP.UTF-8", LUMISK_CATALOGUES).pluralText("folder.items", 3),
            "%lld 項目");
  EXPECT_EQ(GettextStringTable("en_US.UTF-8", LUMISK_CATALOGUES).text("folder.empty"),
            "This folder is empty");
}

TEST_F(GettextStringTableInLocales, ALanguageWithoutACatalogueIsEnglish) {
  EXPECT_EQ(GettextStringTable("sv_SE.UTF-8", LUMISK_CATALOGUES).text("folder.empty"),
            "This folder is empty");
}

TEST_F(GettextStringTableInLocales, UnknownKeysAreNothingInAnyLanguage) {
  const GettextStringTable strings("de_DE.UTF-8", LUMISK_CATALOGUES);
  EXPECT_EQ(strings.text(""), std::nullopt);
  EXPECT_EQ(strings.text("folder.nothing"), std::nullopt);
}

TEST_F(GettextStringTableInLocales, TheLanguageListComesBeforeTheLocale) {
  const GettextStringTable strings("de_DE.UTF-8", LUMISK_CATALOGUES);
  {
    const ScopedVariable language("LANGUAGE", "fr:es");
    EXPECT_EQ(strings.text("folder.empty"), "Ce dossier est vide");
  }
  {
    const ScopedVariable language("LANGUAGE", "sv:es");
    EXPECT_EQ(strings.text("folder.empty"), "Esta carpeta está vacía");
  }
  {
    const ScopedVariable language("LANGUAGE", "en:de");
    EXPECT_EQ(strings.text("folder.empty"), "This folder is empty");
  }
  {
    const ScopedVariable language("LANGUAGE", "pt_BR");
    EXPECT_EQ(strings.text("folder.empty"), "Esta pasta está vazia");
  }
}

TEST_F(GettextStringTableInLocales, PluralFormsFollowTheLanguage) {
  struct Row {
    const char* language;
    std::int64_t count;
    const char* text;
  };
  const std::vector<Row> rows = {
      {"en", 1, "%lld item"},       {"en", 2, "%lld items"},      {"fr", 0, "%lld élément"},
      {"fr", 1, "%lld élément"},    {"fr", 2, "%lld éléments"},   {"pt_BR", 1, "%lld item"},
      {"pt_BR", 2, "%lld itens"},   {"pl", 1, "%lld element"},    {"pl", 2, "%lld elementy"},
      {"pl", 5, "%lld elementów"},  {"pl", 12, "%lld elementów"}, {"pl", 22, "%lld elementy"},
      {"pl", 21, "%lld elementów"}, {"ru", 1, "%lld объект"},     {"ru", 21, "%lld объект"},
      {"ru", 3, "%lld объекта"},    {"ru", 11, "%lld объектов"},  {"ru", 112, "%lld объектов"},
      {"ru", 104, "%lld объекта"},  {"ar", 1, "%lld عنصر"},       {"ar", 3, "%lld عناصر"},
      {"ar", 11, "%lld عنصرًا"},     {"ar", 99, "%lld عنصرًا"},     {"ar", 100, "%lld عنصر"},
      {"ar", 103, "%lld عناصر"},    {"zh_CN", 7, "%lld 个项目"},
  };
  const GettextStringTable strings("de_DE.UTF-8", LUMISK_CATALOGUES);
  for (const Row& row : rows) {
    const ScopedVariable language("LANGUAGE", row.language);
    EXPECT_EQ(strings.pluralText("folder.items", row.count), row.text)
        << row.language << ' ' << row.count;
  }
}

TEST_F(GettextStringTableInLocales, TheThreadsOwnLocaleIsLeftAlone) {
  const GettextStringTable strings("de_DE.UTF-8", LUMISK_CATALOGUES);
  const locale_t before = uselocale(nullptr);
  EXPECT_TRUE(strings.text("folder.empty").has_value());
  EXPECT_EQ(uselocale(nullptr), before);
}

}  // namespace
}  // namespace lumisk
