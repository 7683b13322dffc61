#include "cli/arguments.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumisk {
namespace {

using Words = std::vector<std::string_view>;

TEST(Arguments, AcceptsEveryFormOfPage) {
  struct Row {
    Words words;
    bool isDark;
    std::optional<DocumentMode> mode;
    const char* path;
  };
  const std::vector<Row> rows = {
      {{"page", "a.md"}, false, std::nullopt, "a.md"},
      {{"page", "--dark", "a.md"}, true, std::nullopt, "a.md"},
      {{"page", "a.md", "--dark"}, true, std::nullopt, "a.md"},
      {{"page", "--dark", "--light", "a.md"}, false, std::nullopt, "a.md"},
      {{"page", "--mode", "text", "a.json"}, false, DocumentMode::Text, "a.json"},
      {{"page", "--mode=formatted", "a.json"}, false, DocumentMode::Formatted, "a.json"},
      {{"page", "--", "--dark"}, false, std::nullopt, "--dark"},
      {{"page", "-"}, false, std::nullopt, "-"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    const auto parsed = parseArguments(row.words);
    const auto* arguments = std::get_if<Arguments>(&parsed);
    ASSERT_NE(arguments, nullptr);
    EXPECT_EQ(arguments->subcommand, Subcommand::Page);
    EXPECT_EQ(arguments->isDark, row.isDark);
    EXPECT_EQ(arguments->mode, row.mode);
    EXPECT_EQ(arguments->path, row.path);
  }
}

TEST(Arguments, DescribeTakesTheModesOfEveryView) {
  for (const auto mode : {DocumentMode::Formatted, DocumentMode::Rendered, DocumentMode::Source,
                          DocumentMode::Text}) {
    const auto parsed = parseArguments({"describe", "--mode", nameOf(mode), "--dark", "a"});
    const auto* arguments = std::get_if<Arguments>(&parsed);
    ASSERT_NE(arguments, nullptr) << nameOf(mode);
    EXPECT_EQ(arguments->subcommand, Subcommand::Describe);
    EXPECT_EQ(arguments->mode, mode);
    EXPECT_TRUE(arguments->isDark);
    EXPECT_EQ(arguments->path, "a");
  }
}

TEST(Arguments, RejectsWhatMeansNothing) {
  const std::vector<Words> rows = {
      {},
      {"pages", "a"},
      {"page"},
      {"page", ""},
      {"page", "a", "b"},
      {"page", "--drak", "a"},
      {"page", "-d", "a"},
      {"page", "--mode"},
      {"page", "a", "--mode"},
      {"page", "--mode", "raw", "a"},
      {"page", "--mode=", "a"},
      {"page", "--mode", "rendered", "a"},
      {"page", "--mode", "source", "a"},
      {"describe"},
      {"describe", "--mode", "raw", "a"},
      {"describe", "--mode"},
      {"--version", "x"},
      {"--nonsense"},
  };
  for (const Words& words : rows) {
    const auto parsed = parseArguments(words);
    const auto* error = std::get_if<UsageError>(&parsed);
    ASSERT_NE(error, nullptr) << testing::PrintToString(words);
    EXPECT_FALSE(error->message.empty());
  }
}

TEST(Arguments, HelpNamesEveryOption) {
  for (const char* word :
       {"page", "describe", "--dark", "--light", "--mode", "--help", "--version"}) {
    EXPECT_NE(kHelpText.find(word), std::string_view::npos) << word;
  }
}

}  // namespace
}  // namespace lumisk
