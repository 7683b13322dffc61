#include "core/file_url.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumisk {
namespace {

struct PathCase {
  const char* label;
  std::string path;
  std::string expected;
};

TEST(FileURL, PathsAreMadeAbsoluteAndResolvedInTheTextAlone) {
  const std::vector<PathCase> cases = {
      {"absolute", "/a/b.md", "file:///a/b.md"},
      {"relative", "b.md", "file:///home/me/b.md"},
      {"dot", "./b.md", "file:///home/me/b.md"},
      {"dot inside", "/a/./b", "file:///a/b"},
      {"parent", "../b.md", "file:///home/b.md"},
      {"parent inside", "/a/x/../b", "file:///a/b"},
      {"parent beyond the root", "/../../b", "file:///b"},
      {"doubled slashes", "//a///b", "file:///a/b"},
      {"folder keeps its slash", "/a/b/", "file:///a/b/"},
      {"dot at the end is a folder", "/a/.", "file:///a/"},
      {"parent at the end is a folder", "/a/b/..", "file:///a/"},
      {"root", "/", "file:///"},
      {"empty is the current folder", "", "file:///home/me/"},
      {"three dots are a name", "/a/...", "file:///a/..."},
  };
  for (const PathCase& row : cases) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(FileURL::fromPath(row.path, "/home/me").absoluteString(), row.expected);
  }
}

TEST(FileURL, EveryByteStandsOrIsEscaped) {
  const std::string unescaped =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~!$&'()*+,=:@";
  for (int value = 1; value < 256; ++value) {
    const char byte = static_cast<char>(value);
    if (byte == '/') continue;
    SCOPED_TRACE(value);
    char escape[4] = {};
    snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(value));
    const std::string expected =
        unescaped.find(byte) != std::string::npos ? std::string(1, byte) : std::string(escape);
    EXPECT_EQ(FileURL::fromPath("/x" + std::string(1, byte) + "y").absoluteString(),
              "file:///x" + expected + "y");
  }
}

TEST(FileURL, AbsoluteStringReadsBackAsTheSameValue) {
  for (int value = 1; value < 256; ++value) {
    const FileURL url = FileURL::fromPath("/folder " + std::string(2, static_cast<char>(value)));
    EXPECT_EQ(FileURL::fromString(url.absoluteString()), url) << value;
  }
}

TEST(FileURL, AcceptsTheFormsOfFileUris) {
  const std::vector<PathCase> cases = {
      {"empty host", "file:///a/b.md", "/a/b.md"},
      {"no host", "file:/a/b.md", "/a/b.md"},
      {"localhost", "file://localhost/a", "/a"},
      {"scheme and host in any case", "FILE://LocalHost/a", "/a"},
      {"escapes of either case", "file:///a%2fb%2Fc%c3%A9", "/a/b/c\xC3\xA9"},
      {"bytes that are no text", "file:///%ff", "/\xFF"},
      {"fragment", "file:///a.md#part", "/a.md"},
      {"query", "file:///a.md?x=1", "/a.md"},
      {"escaped fragment sign", "file:///a%23b", "/a#b"},
      {"unescaped blanks, as people type them", "file:///a b", "/a b"},
      {"parents are resolved", "file:///a/../b", "/b"},
  };
  for (const PathCase& row : cases) {
    SCOPED_TRACE(row.label);
    const std::optional<FileURL> url = FileURL::fromString(row.path);
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->path(), row.expected);
  }
}

TEST(FileURL, RejectsWhatNamesNoLocalFile) {
  const std::vector<std::string> cases = {
      "",
      "/a/b.md",
      "http://x/a",
      "file:",
      "file:a",
      "file://",
      "file://server/a",
      "file:///a%",
      "file:///a%2",
      "file:///a%zz",
      "file:///%g0",
      "file:///a%00b",
      "trash:///a",
      "file://localhostx/a",
      "fil",
  };
  for (const std::string& text : cases) {
    EXPECT_FALSE(FileURL::fromString(text).has_value()) << text;
  }
}

TEST(FileURL, LastComponentAndFolder) {
  struct Row {
    const char* path;
    const char* last;
    const char* folder;
  };
  const std::vector<Row> rows = {
      {"/a/notes.md", "notes.md", "file:///a/"},
      {"/a/b/", "b", "file:///a/"},
      {"/a", "a", "file:///"},
      {"/", "/", "file:///"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    const FileURL url = FileURL::fromPath(row.path);
    EXPECT_EQ(url.lastPathComponent(), row.last);
    EXPECT_EQ(url.deletingLastPathComponent().absoluteString(), row.folder);
  }
}

TEST(FileURL, PathExtension) {
  struct Row {
    const char* path;
    const char* extension;
  };
  const std::vector<Row> rows = {
      {"/a/notes.md", "md"},   {"/a/a.tar.gz", "gz"},    {"/a/Makefile", ""}, {"/a/.bashrc", ""},
      {"/a/name.", ""},        {"/a/.profile.sh", "sh"}, {"/a.b/c", ""},      {"/a/x.MD", "MD"},
      {"/a/folder.md/", "md"}, {"/a/..x", "x"},          {"/a/x. y", " y"},   {"/", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FileURL::fromPath(row.path).pathExtension(), row.extension) << row.path;
  }
}

TEST(FileURL, AppendingAComponentAndDeletingItGivesTheFolderBack) {
  const FileURL folder = FileURL::fromPath("/a b/");
  EXPECT_EQ(folder.appendingPathComponent("dummy.json").absoluteString(),
            "file:///a%20b/dummy.json");
  EXPECT_EQ(folder.appendingPathComponent("dummy.json").deletingLastPathComponent(), folder);
  EXPECT_EQ(FileURL::fromPath("/a").appendingPathComponent("b").path(), "/a/b");
  EXPECT_EQ(FileURL::fromPath("/").appendingPathComponent("b").path(), "/b");
}

}  // namespace
}  // namespace lumisk
