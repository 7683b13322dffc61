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
    EXPECT_EQ(arguments->path(), row.path);
  }
}

TEST(Arguments, OpenTakesSeveralPathsAndMayBeLeftOut) {
  struct Row {
    Words words;
    std::vector<std::string> paths;
  };
  const std::vector<Row> rows = {
      {{"open", "a"}, {"a"}},
      {{"open", "a", "b", "c"}, {"a", "b", "c"}},
      {{"a"}, {"a"}},
      {{"a", "b"}, {"a", "b"}},
      {{"a", "page"}, {"a", "page"}},
      {{"open", "page"}, {"page"}},
      {{"open", "--", "-a"}, {"-a"}},
      {{"./page"}, {"./page"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    const auto parsed = parseArguments(row.words);
    const auto* arguments = std::get_if<Arguments>(&parsed);
    ASSERT_NE(arguments, nullptr);
    EXPECT_EQ(arguments->subcommand, Subcommand::Open);
    EXPECT_EQ(arguments->paths, row.paths);
  }
}

TEST(Arguments, SnapshotLeavesAllWordsToThePreviewer) {
  const auto parsed = parseArguments({"snapshot", "--size", "800x600", "--", "a", "b.png"});
  const auto* arguments = std::get_if<Arguments>(&parsed);
  ASSERT_NE(arguments, nullptr);
  EXPECT_EQ(arguments->subcommand, Subcommand::Snapshot);
  EXPECT_EQ(arguments->paths, (std::vector<std::string>{"--size", "800x600", "--", "a", "b.png"}));
  for (const char* file : {"--help", "-h"}) {
    const auto ofAFile = parseArguments({"snapshot", "--", file, "b.png"});
    ASSERT_TRUE(std::holds_alternative<Arguments>(ofAFile));
    EXPECT_EQ(std::get<Arguments>(ofAFile).subcommand, Subcommand::Snapshot);
  }
}

TEST(Arguments, EveryCommandTellsOfItself) {
  const std::vector<Words> rows = {
      {"--help"},
      {"-h"},
      {"page", "--help"},
      {"describe", "a", "--help"},
      {"open", "--help"},
      {"integrate", "--help"},
      {"snapshot", "--help"},
      {"snapshot", "--dark", "a", "--help"},
      {"page", "-h"},
      {"describe", "a", "-h"},
      {"a", "-h"},
      {"integrate", "-h"},
      {"snapshot", "--dark", "a", "-h"},
  };
  for (const Words& words : rows) {
    const auto parsed = parseArguments(words);
    const auto* arguments = std::get_if<Arguments>(&parsed);
    ASSERT_NE(arguments, nullptr) << testing::PrintToString(words);
    EXPECT_EQ(arguments->subcommand, Subcommand::Help) << testing::PrintToString(words);
  }
}

TEST(Arguments, IntegrateInstallsUnlessToldOtherwise) {
  struct Row {
    Words words;
    Integration integration;
  };
  const std::vector<Row> rows = {
      {{"integrate"}, Integration::Install},
      {{"integrate", "--remove"}, Integration::Remove},
      {{"integrate", "--remove", "--remove"}, Integration::Remove},
      {{"integrate", "--status"}, Integration::Status},
  };
  for (const Row& row : rows) {
    const auto parsed = parseArguments(row.words);
    const auto* arguments = std::get_if<Arguments>(&parsed);
    ASSERT_NE(arguments, nullptr);
    EXPECT_EQ(arguments->subcommand, Subcommand::Integrate);
    EXPECT_EQ(arguments->integration, row.integration);
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
    EXPECT_EQ(arguments->path(), "a");
  }
}

TEST(Arguments, RejectsWhatMeansNothing) {
  const std::vector<Words> rows = {
      {},
      {"open"},
      {"open", ""},
      {"a", ""},
      {"a", "--dark"},
      {"open", "--mode=text", "a"},
      {"integrate", "a"},
      {"integrate", "--remove", "--status"},
      {"integrate", "--dark"},
      {"page", "--remove", "a"},
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
       {"page", "describe", "open", "snapshot", "integrate", "--dark", "--size", "--light",
        "--mode", "--remove", "--status", "-h, --help", "--version"}) {
    EXPECT_NE(kHelpText.find(word), std::string_view::npos) << word;
  }
}

}  // namespace
}  // namespace lumisk
