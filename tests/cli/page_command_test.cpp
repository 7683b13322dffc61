// The command as people run it: a process, its two output streams and its exit status.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <vector>

#include "core/file_url.h"
#include "core/json_page.h"
#include "core/markdown_page.h"
#include "core/source_page.h"
#include "core/table_page.h"
#include "support/files.h"
#include "support/process.h"

namespace lumisk {
namespace {

using test::ProcessOptions;
using test::ProcessResult;
using test::runProcess;
using test::TemporaryFolder;
using test::writeAll;

ProcessResult lumiskCommand(std::vector<std::string> words, const ProcessOptions& options = {}) {
  words.insert(words.begin(), LUMISK_COMMAND);
  return runProcess(words, options);
}

void expectPage(const ProcessResult& result, const std::string& page) {
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.standardError, "");
  EXPECT_TRUE(result.standardOutput == page)
      << result.standardOutput.size() << " bytes instead of " << page.size();
}

TEST(PageCommand, WritesThePageOfEachKindAndMode) {
  const TemporaryFolder folder;
  const auto at = [&](const char* name) { return FileURL::fromPath((folder / name).string()); };
  const std::string base = FileURL::fromPath(folder.path().string() + "/").absoluteString();
  const std::string json = "{\"a\":[1,2]}";
  struct Row {
    const char* name;
    std::string text;
    std::vector<std::string> options;
    std::string page;
  };
  const std::vector<Row> rows = {
      {"README.MD", "# x <b>", {}, buildMarkdownPage("# x <b>", base, false)},
      {"x.Markdown", "# x", {"--dark"}, buildMarkdownPage("# x", base, true)},
      {"x.mdown", "# x <b>", {}, buildSourceHTML("# x <b>", at("x.mdown"), "mdown", false)},
      {"t.csv", "a,b\n1\t2,3", {}, buildTableHTML("a,b\n1\t2,3", at("t.csv"), ",", false)},
      {"t.TSV", "a,b\n1\t2,3", {}, buildTableHTML("a,b\n1\t2,3", at("t.TSV"), "\t", false)},
      {"e.csv", "", {}, buildTableHTML("", at("e.csv"), ",", false)},
      {"d.json", json, {}, buildJSONHTML(json, at("d.json"), false, true)},
      {"d.JSON", json, {"--mode=text"}, buildJSONHTML(json, at("d.JSON"), false, false)},
      {"l.jsonl", json, {}, buildJSONLHTML(json, at("l.jsonl"), false, false)},
      {"m.jsonl",
       json,
       {"--mode", "formatted", "--dark"},
       buildJSONLHTML(json, at("m.jsonl"), true, true)},
      {"Makefile", "all:", {}, buildSourceHTML("all:", at("Makefile"), "", false)},
      {"s.JS", "a<b", {}, buildSourceHTML("a<b", at("s.JS"), "js", false)},
      {"bom.txt", "\xEF\xBB\xBFx", {}, buildSourceHTML("x", at("bom.txt"), "txt", false)},
      {"one.txt", "x", {}, buildSourceHTML("x", at("one.txt"), "txt", false)},
      {"nul.txt",
       std::string("a\0b", 3),
       {},
       buildSourceHTML(std::string_view("a\0b", 3), at("nul.txt"), "txt", false)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    writeAll(folder / row.name, row.text);
    std::vector<std::string> words = {"page"};
    words.insert(words.end(), row.options.begin(), row.options.end());
    words.push_back((folder / row.name).string());
    expectPage(lumiskCommand(words), row.page);
  }
}

// Whether a text is JSON is known at its last byte, long after the first of its page.
TEST(PageCommand, LongJsonIsLaidOutOrShownAsItStandsNeverHalfOfEach) {
  const TemporaryFolder folder;
  const FileURL url = FileURL::fromPath((folder / "long.json").string());
  for (const int records : {10, 5'000, 30'000, 300'000}) {
    std::string text = "[0";
    for (int i = 1; i <= records; ++i) text += ",{\"n\":" + std::to_string(i) + "}";
    for (const char* end : {"]", "", "}", "]]", ",]"}) {
      SCOPED_TRACE(std::to_string(records) + " records and " + end);
      writeAll(folder / "long.json", text + end);
      expectPage(lumiskCommand({"page", url.path()}), buildJSONHTML(text + end, url, false, true));
    }
  }
}

TEST(PageCommand, TakesRelativePathsAndFileUris) {
  const TemporaryFolder folder;
  writeAll(folder / "a b.txt", "x");
  const FileURL url = FileURL::fromPath((folder / "a b.txt").string());
  const std::string page = buildSourceHTML("x", url, "txt", false);
  const ProcessOptions inside = {.workingDirectory = folder.path().string()};
  expectPage(lumiskCommand({"page", "a b.txt"}, inside), page);
  expectPage(lumiskCommand({"page", "./nowhere/../a b.txt"}, inside), page);
  expectPage(lumiskCommand({"page", url.absoluteString()}), page);
}

TEST(PageCommand, ShowsFilesWhateverTheirName) {
  const TemporaryFolder folder;
  for (const std::string name : {"quote\"'.txt", "per%cent %41.txt", "line\nfeed.txt", "é日本.txt",
                                 "no text \xFF\xFE.txt", "ext.\xFF", "--dark", "#?.md"}) {
    SCOPED_TRACE(name);
    writeAll(folder / name, "x");
    const FileURL url = FileURL::fromPath((folder / name).string());
    const std::string base = url.deletingLastPathComponent().absoluteString();
    const std::string page = name == "#?.md"
                                 ? buildMarkdownPage("x", base, false)
                                 : buildSourceHTML("x", url, url.pathExtension(), false);
    expectPage(lumiskCommand({"page", url.path()}), page);
    expectPage(lumiskCommand({"page", url.absoluteString()}), page);
    expectPage(lumiskCommand({"page", "--", name}, {.workingDirectory = folder.path().string()}),
               page);
  }
}

TEST(PageCommand, UndecodableTextFailsWithTheErrorOfItsKind) {
  struct Row {
    const char* name;
    int code;
    const char* message;
  };
  const Row rows[] = {
      {"x.md", 1, "Failed to read Markdown file as UTF8 text."},
      {"x.csv", 2, "Failed to read CSV file as UTF8 text."},
      {"x.tsv", 2, "Failed to read CSV file as UTF8 text."},
      {"x.jsonl", 3, "Failed to read JSONL file as UTF8 text."},
      {"x.json", 4, "Failed to read JSON file as UTF8 text."},
      {"x.txt", 1, "Failed to read file as text."},
  };
  const TemporaryFolder folder;
  const std::string text(100, 'x');
  for (const Row& row : rows) {
    for (const std::size_t position : {0U, 50U, 99U}) {
      SCOPED_TRACE(row.name + std::to_string(position));
      std::string bytes = text;
      bytes[position] = '\xFF';
      writeAll(folder / row.name, bytes);
      const ProcessResult result = lumiskCommand({"page", (folder / row.name).string()});
      const std::string message = row.message;
      EXPECT_EQ(result.exitStatus, 1);
      EXPECT_EQ(
          result.standardOutput,
          "Failed to load and parse file: Error Domain=Lumisk Code=" + std::to_string(row.code) +
              " \"" + message + "\" UserInfo={NSLocalizedDescription=" + message + "}\n");
      EXPECT_EQ(result.standardError,
                "lumisk: cannot show '" + (folder / row.name).string() + "': " + message + "\n");
    }
  }
}

TEST(PageCommand, MissingFileFailsWithTheSystemsReason) {
  const ProcessResult result = lumiskCommand({"page", "/nowhere/x.md"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.standardOutput,
            "Failed to load and parse file: Error Domain=POSIX Code=2 \"No such file or "
            "directory\" UserInfo={NSLocalizedDescription=No such file or directory}\n");
  EXPECT_EQ(result.standardError,
            "lumisk: cannot show '/nowhere/x.md': No such file or directory\n");
}

TEST(PageCommand, RefusesWhatCouldBlock) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe.md").c_str(), 0600), 0);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, (folder / "socket.md").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  struct Row {
    std::string path;
    const char* reason;
  };
  const Row rows[] = {
      {(folder / "pipe.md").string(), "the item is a named pipe, not a file"},
      {(folder / "socket.md").string(), "the item is a socket, not a file"},
      {"/dev/zero", "the item is a device, not a file"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    const ProcessResult result = lumiskCommand({"page", row.path});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_NE(result.standardOutput.find("Error Domain=POSIX Code=95 "), std::string::npos);
    EXPECT_NE(result.standardError.find(row.reason), std::string::npos);
  }
  close(listener);
}

TEST(PageCommand, FolderHasNoPage) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "notes.md");
  const ProcessResult result = lumiskCommand({"page", (folder / "notes.md").string()});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.standardOutput, "");
  EXPECT_NE(result.standardError.find("is a folder"), std::string::npos);
}

TEST(PageCommand, WrongUsageSaysSo) {
  const TemporaryFolder folder;
  writeAll(folder / "x.md", "x");
  const std::vector<std::vector<std::string>> rows = {
      {},
      {"page"},
      {"page", "--mode", "text", (folder / "x.md").string()},
      {"page", "file://elsewhere/x.md"},
      {"page", "file:///%zz"},
      {"--nonsense"},
  };
  for (const std::vector<std::string>& words : rows) {
    const ProcessResult result = lumiskCommand(words);
    EXPECT_EQ(result.exitStatus, 2) << testing::PrintToString(words);
    EXPECT_EQ(result.standardOutput, "");
    EXPECT_EQ(result.standardError.substr(0, 8), "lumisk: ");
  }
}

TEST(PageCommand, ControlCharactersOfANameDoNotReachTheTerminal) {
  const ProcessResult result = lumiskCommand({"page", "/nowhere/\x1B[31m\nx"});
  EXPECT_NE(result.standardError.find("'/nowhere/?[31m?x'"), std::string::npos);
}

TEST(PageCommand, HelpAndVersion) {
  EXPECT_EQ(lumiskCommand({"--version"}).standardOutput.substr(0, 7), "lumisk ");
  const ProcessResult help = lumiskCommand({"--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_EQ(help.standardOutput.substr(0, 13), "Usage: lumisk");
  EXPECT_EQ(lumiskCommand({"page", "--help"}).standardOutput, help.standardOutput);
}

TEST(PageCommand, ReaderThatWentAwayIsNoError) {
  const TemporaryFolder folder;
  writeAll(folder / "long.txt", std::string(1'000'000, '<'));
  const std::vector<std::string> words = {"page", (folder / "long.txt").string()};
  const ProcessResult ignored =
      lumiskCommand(words, {.closeReader = true, .ignoreBrokenPipe = true});
  EXPECT_EQ(ignored.exitStatus, 0);
  EXPECT_EQ(ignored.standardError, "");
  const ProcessResult signalled = lumiskCommand(words, {.closeReader = true});
  EXPECT_EQ(signalled.exitStatus, 128 + SIGPIPE);
  EXPECT_EQ(signalled.standardError, "");
}

TEST(PageCommand, PipeThatDoesNotWaitGetsTheWholePageToo) {
  const TemporaryFolder folder;
  const std::string text(3'000'000, '<');
  writeAll(folder / "long.txt", text);
  const FileURL url = FileURL::fromPath((folder / "long.txt").string());
  expectPage(lumiskCommand({"page", url.path()}, {.nonBlockingOutput = true}),
             buildSourceHTML(text, url, "txt", false));
}

TEST(PageCommand, FullDiskIsAnError) {
  const TemporaryFolder folder;
  writeAll(folder / "x.txt", "x");
  const ProcessResult result = runProcess(
      {"/bin/sh", "-c", "exec \"$0\" page \"$1\" >/dev/full", LUMISK_COMMAND, folder / "x.txt"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.standardError,
            "lumisk: cannot write to standard output: No space left on device\n");
}

}  // namespace
}  // namespace lumisk
