#include "platform/file_reading.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/argument_url.h"
#include "platform/previewed_file.h"
#include "support/files.h"
#include "support/privileges.h"

namespace lumisk {
namespace {

using test::TemporaryFolder;
using test::writeAll;

int errorCode(const std::string& path) {
  const auto result = readFile(path);
  const auto* error = std::get_if<ErrorRecord>(&result);
  if (error == nullptr) return 0;
  EXPECT_EQ(error->domain, "POSIX");
  EXPECT_FALSE(error->localizedDescription.empty());
  return error->code;
}

TEST(FileReading, GivesTheBytesOfAnySize) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 16383U, 16384U, 16385U, 5'000'000U}) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 31 % 257);
    writeAll(folder / "file", bytes);
    const auto result = readFile(folder / "file");
    ASSERT_TRUE(std::holds_alternative<FileContents>(result)) << size;
    EXPECT_TRUE(std::get<FileContents>(result).bytes() == bytes) << size;
  }
}

TEST(FileReading, ReadsOnFromABeginningThatIsWorthIt) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 65534U, 65535U, 65536U, 65537U, 5'000'000U}) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 31 % 257);
    writeAll(folder / "file", bytes);
    const auto result = readFile(folder / "file", [](std::string_view) { return true; });
    ASSERT_TRUE(std::holds_alternative<FileContents>(result)) << size;
    EXPECT_TRUE(std::get<FileContents>(result).bytes() == bytes) << size;
  }
}

TEST(FileReading, ReadsNoMoreThanABeginningThatIsNotWorthIt) {
  const TemporaryFolder folder;
  writeAll(folder / "file", std::string(5'000'000, 'x'));
  const auto result = readFile(folder / "file", [](std::string_view) { return false; });
  ASSERT_TRUE(std::holds_alternative<FileContents>(result));
  EXPECT_EQ(std::get<FileContents>(result).bytes().size(), 65'536U);
}

TEST(FileReading, StopsWhereItIsNotWantedAnyMore) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "");
  std::filesystem::resize_file(folder / "file", 100 << 20);
  std::vector<std::size_t> asked;
  const auto isWanted = [&](std::string_view soFar) {
    asked.push_back(soFar.size());
    return asked.size() < 3;
  };
  const auto result = readFile(folder / "file", isWanted);
  ASSERT_TRUE(std::holds_alternative<FileContents>(result));
  constexpr std::size_t kFirst = 64 << 10;
  constexpr std::size_t kBetween = 16 << 20;
  EXPECT_EQ(asked, (std::vector<std::size_t>{kFirst, kFirst + kBetween, kFirst + 2 * kBetween}));
  EXPECT_EQ(std::get<FileContents>(result).bytes().size(), asked.back());
}

TEST(FileReading, ReadsFilesWhoseSizeIsNotTold) {
  const auto result = readFile("/proc/self/status");
  ASSERT_TRUE(std::holds_alternative<FileContents>(result));
  EXPECT_NE(std::get<FileContents>(result).bytes().find("Pid:"), std::string_view::npos);
}

TEST(FileReading, ContentsCanBeMoved) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "text");
  FileContents first = std::get<FileContents>(readFile(folder / "file"));
  FileContents second = std::move(first);
  EXPECT_EQ(second.bytes(), "text");
  FileContents third;
  third = std::move(second);
  EXPECT_EQ(third.bytes(), "text");
}

TEST(FileReading, ReportsTheRealReason) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "x");
  EXPECT_EQ(errorCode(folder / "missing"), ENOENT);
  EXPECT_EQ(errorCode(folder.path()), EISDIR);
  EXPECT_EQ(errorCode(folder / "file/below"), ENOTDIR);
  ASSERT_EQ(symlink("loop", (folder / "loop").c_str()), 0);
  EXPECT_EQ(errorCode(folder / "loop"), ELOOP);
  EXPECT_EQ(errorCode(folder / std::string(5000, 'x')), ENAMETOOLONG);
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(errorCode(folder / "pipe"), ENOTSUP);
  EXPECT_EQ(errorCode("/dev/null"), ENOTSUP);
  // Memory of its own that no other process may read: a real input error, whoever runs the test.
  EXPECT_EQ(errorCode("/proc/self/mem"), EIO);
}

TEST(FileReading, UnreadableFileIsAPermissionError) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "x");
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod((folder / "file").c_str(), 0), 0);
  const test::WithoutPrivileges nobody;
  EXPECT_EQ(errorCode(folder / "file"), EACCES);
}

TEST(FileReading, AFileThatGrowsAndShrinksMeanwhileIsReadAsOneOfItsStates) {
  const TemporaryFolder folder;
  constexpr std::size_t kLargest = 3'000'000;
  const std::string bytes(kLargest, 'x');
  writeAll(folder / "file", bytes);
  std::atomic<bool> isDone = false;
  std::thread writer([&] {
    for (std::size_t i = 1; !isDone; ++i) {
      std::filesystem::resize_file(folder / "file", i * 4099 % 100);
      writeAll(folder / "file", bytes);
    }
  });
  for (int i = 0; i < 200; ++i) {
    const auto result = readFile(folder / "file");
    const auto* contents = std::get_if<FileContents>(&result);
    ASSERT_NE(contents, nullptr);
    EXPECT_LE(contents->bytes().size(), kLargest);
    // What a file gets back after it was cut off reads as NUL until it is written.
    EXPECT_EQ(contents->bytes().find_first_not_of(std::string_view("x\0", 2)),
              std::string_view::npos);
  }
  isDone = true;
  writer.join();
}

TEST(FileReading, TellsFoldersFromOtherItems) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "x");
  ASSERT_EQ(symlink(".", (folder / "link").c_str()), 0);
  EXPECT_TRUE(isExistingDirectory(folder.path()));
  EXPECT_TRUE(isExistingDirectory(folder / "link"));
  EXPECT_FALSE(isExistingDirectory(folder / "file"));
  EXPECT_FALSE(isExistingDirectory(folder / "missing"));
}

TEST(PreviewedFile, IsReadTheKindToldAndTheTextDecoded) {
  const TemporaryFolder folder;
  writeAll(folder / "Notes.MarkDown", "\xEF\xBB\xBF# x");
  const auto result = PreviewedFile::load(FileURL::fromPath((folder / "Notes.MarkDown").string()));
  const auto* file = std::get_if<PreviewedFile>(&result);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->kind(), PreviewKind::Markdown);
  EXPECT_EQ(file->extension(), "markdown");
  EXPECT_EQ(file->text(), "# x");
}

// More than there is memory for: an attempt to read it through ends with another error.
TEST(PreviewedFile, AFilmIsNotReadThroughToFindThatItIsNoText) {
  const TemporaryFolder folder;
  writeAll(folder / "film.mp4", std::string("\0\0\0\x20"
                                            "ftypisom\xFF",
                                            13));
  std::error_code error;
  std::filesystem::resize_file(folder / "film.mp4", std::uintmax_t{1} << 40, error);
  if (error) GTEST_SKIP() << "no file of a terabyte here: " << error.message();
  const auto result = PreviewedFile::load(FileURL::fromPath((folder / "film.mp4").string()));
  const auto* reason = std::get_if<ErrorRecord>(&result);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->domain, kLumiskErrorDomain);
}

// Again more than there is memory for.
TEST(PreviewedFile, WhatIsNotWantedAnyMoreIsNotReadOn) {
  const TemporaryFolder folder;
  writeAll(folder / "log.txt", "text");
  std::error_code error;
  std::filesystem::resize_file(folder / "log.txt", std::uintmax_t{1} << 40, error);
  if (error) GTEST_SKIP() << "no file of a terabyte here: " << error.message();
  int asked = 0;
  const auto result = PreviewedFile::load(FileURL::fromPath((folder / "log.txt").string()), [&] {
    ++asked;
    return false;
  });
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(std::holds_alternative<PreviewedFile>(result)) << "not read through";
}

TEST(PreviewedFile, KindIsToldFromTheNameAlone) {
  EXPECT_EQ(previewKindOf(FileURL::fromPath("/x/data.TSV")), PreviewKind::Table);
  EXPECT_EQ(previewKindOf(FileURL::fromPath("/x/md")), PreviewKind::Code);
  EXPECT_EQ(previewKindOf(FileURL::fromPath("/x/a.\xFF")), PreviewKind::Code);
}

TEST(ArgumentURL, IsAPathOrAFileUri) {
  const std::string current = std::filesystem::current_path().string();
  EXPECT_EQ(fileURLOfArgument("a.md")->path(), current + "/a.md");
  EXPECT_EQ(fileURLOfArgument("/a.md")->path(), "/a.md");
  EXPECT_EQ(fileURLOfArgument("file:///a%20b")->path(), "/a b");
  EXPECT_EQ(fileURLOfArgument("FILE:///a")->path(), "/a");
  EXPECT_EQ(fileURLOfArgument("./file:x")->path(), current + "/file:x");
  EXPECT_FALSE(fileURLOfArgument("file://elsewhere/x").has_value());
}

}  // namespace
}  // namespace lumisk
