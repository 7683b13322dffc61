// `lumisk describe` as people run it: a process, its two output streams and its exit status.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/json_page.h"
#include "core/markdown_page.h"
#include "core/source_page.h"
#include "support/files.h"
#include "support/outlines.h"
#include "support/process.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;

using test::ProcessResult;
using test::TemporaryFolder;
using test::writeAll;

void replaceAll(std::string& text, const std::string& what, const std::string& with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
}

class DescribeCommand : public testing::Test {
 protected:
  DescribeCommand() {
    ::setenv("LC_ALL", "C", 1);
    ::setenv("TZ", "UTC", 1);
  }
  ~DescribeCommand() override {
    ::unsetenv("LC_ALL");
    ::unsetenv("TZ");
  }

  ProcessResult describe(std::vector<std::string> words) {
    words.insert(words.begin(), {LUMISK_COMMAND, "describe"});
    return test::runProcess(words, {.workingDirectory = folder_.path().string()});
  }

  void expectOutline(const ProcessResult& result, const char* name, std::size_t pageLength = 0) {
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.standardError, "");
    std::string outline = test::withoutPageContent(result.standardOutput, pageLength);
    replaceAll(outline, folder_.path().string(), "{folder}");
    replaceAll(outline, "file://{folder}/", "file:///home/ada/notes/");
    const fs::path expected = fs::path(LUMISK_SOURCE) / "tests" / "expected";
    test::expectFile(expected / (std::string(name) + ".outline"), outline);
  }

  FileURL urlOf(std::string_view name) { return FileURL::fromPath((folder_ / name).string()); }
  std::string base() { return "file://" + folder_.path().string() + "/"; }

  TemporaryFolder folder_;
};

// A file without content on the disk, however long it says it is.
void makeSparseFile(const fs::path& path, off_t size) {
  writeAll(path, "");
  ASSERT_EQ(::truncate(path.c_str(), size), 0);
}

void setDate(const fs::path& path) {
  constexpr timespec kDate{1700000000, 0};  // 2023-11-14T22:13:20Z
  const timespec times[] = {kDate, kDate};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

TEST_F(DescribeCommand, ShowsAMarkdownPreviewAsItOpens) {
  const std::string text = "# Notes\n\n*One* & two.\n";
  writeAll(folder_ / "a.md", text);
  expectOutline(describe({"a.md"}), "markdown_loading",
                buildMarkdownPage(text, base(), false).size());
  expectOutline(describe({"--dark", "--mode", "rendered", "a.md"}), "markdown_loading",
                buildMarkdownPage(text, base(), true).size());
}

TEST_F(DescribeCommand, ShowsTheModeThatIsAskedFor) {
  const std::string json = "{\"a\":[1,2]}";
  for (const char* name : {"a.json", "a.jsonl"}) {
    writeAll(folder_ / name, json);
    const bool isJson = std::string(name) == "a.json";
    const auto build = isJson ? buildJSONHTML : buildJSONLHTML;
    const std::size_t formatted = build(json, urlOf(name), false, true).size();
    const std::size_t text = build(json, urlOf(name), false, false).size();
    ASSERT_NE(formatted, text);
    const std::string kind = isJson ? "json" : "jsonl";
    expectOutline(describe({name}), (kind + (isJson ? "_formatted" : "_text")).c_str(),
                  isJson ? formatted : text);
    expectOutline(describe({"--mode", "formatted", name}), (kind + "_formatted").c_str(),
                  formatted);
    expectOutline(describe({"--mode=text", name}), (kind + "_text").c_str(), text);
    expectOutline(describe({"--mode=source", name}), (kind + "_text").c_str(), text);
  }
}

TEST_F(DescribeCommand, ShowsEveryOtherFileAsOnePage) {
  writeAll(folder_ / "a.txt", "hello");
  const auto result = describe({"a.txt"});
  EXPECT_EQ(result.exitStatus, 0);
  const std::size_t length = buildSourceHTML("hello", urlOf("a.txt"), "txt", false).size();
  EXPECT_EQ(test::withoutPageContent(result.standardOutput, length),
            "webpage length=PAGE base=\"" + base() + "\"\n");
}

TEST_F(DescribeCommand, ShowsAFolderWithItsListAndItsSize) {
  const fs::path notes = folder_ / "Notes";
  fs::create_directories(notes / "zeta");
  makeSparseFile(notes / "a.txt", 1536);
  makeSparseFile(notes / "A", 0);
  makeSparseFile(notes / "b\n\xFF.txt", off_t{1} << 30);
  makeSparseFile(notes / ".hidden", 5);
  for (const auto& entry : fs::directory_iterator(notes)) setDate(entry.path());
  setDate(notes);
  expectOutline(describe({"Notes"}), "describe_folder");
}

TEST_F(DescribeCommand, ShowsTheMessageOfAFolderThatLooksEmpty) {
  fs::create_directory(folder_ / "Notes");
  makeSparseFile(folder_ / "Notes" / ".DS_Store", 0);
  setDate(folder_ / "Notes");
  expectOutline(describe({"Notes"}), "describe_empty_folder");
}

TEST_F(DescribeCommand, AFailureIsTheLineTheSentenceAndStatusOne) {
  writeAll(folder_ / "a.csv", "\xFF");
  const auto result = describe({"a.csv"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.standardOutput,
            "Failed to load and parse file: Error Domain=Lumisk Code=2 "
            "\"Failed to read CSV file as UTF8 text.\" "
            "UserInfo={NSLocalizedDescription=Failed to read CSV file as UTF8 text.}\n");
  EXPECT_EQ(result.standardError,
            "lumisk: cannot show 'a.csv': Failed to read CSV file as UTF8 text.\n");
}

TEST_F(DescribeCommand, AModeThatThePreviewLacksIsAnErrorThatNamesTheOthers) {
  writeAll(folder_ / "a.md", "");
  writeAll(folder_ / "a.txt", "");
  const auto markdown = describe({"--mode", "formatted", "a.md"});
  EXPECT_EQ(markdown.exitStatus, 2);
  EXPECT_EQ(markdown.standardOutput, "");
  EXPECT_EQ(markdown.standardError,
            "lumisk: the preview of 'a.md' has no mode called 'formatted': "
            "use rendered or source\n");
  const auto text = describe({"--mode", "text", "a.txt"});
  EXPECT_EQ(text.exitStatus, 2);
  EXPECT_EQ(text.standardError, "lumisk: the preview of 'a.txt' has no mode called 'text'\n");
}

TEST_F(DescribeCommand, TakesAURIAndRefusesAnotherMachines) {
  writeAll(folder_ / "a b.txt", "");
  EXPECT_EQ(describe({base() + "a%20b.txt"}).exitStatus, 0);
  EXPECT_EQ(describe({"file://elsewhere/a"}).exitStatus, 2);
}

}  // namespace
}  // namespace lumisk
