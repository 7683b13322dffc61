#include "folder/directory_reader.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "support/files.h"

namespace lumisk {
namespace {

using test::TemporaryFolder;
using test::writeAll;
using Type = DirectoryReader::Type;

std::map<std::string, Type> entriesOf(const std::filesystem::path& path) {
  std::map<std::string, Type> entries;
  const FileDescriptor folder = openFolder(path.c_str());
  DirectoryReader reader;
  reader.start(folder);
  for (DirectoryReader::Entry entry; reader.next(entry);) entries[entry.name] = entry.type;
  EXPECT_FALSE(reader.hasFailed());
  return entries;
}

TEST(FolderDirectoryReader, EmptyFolder) {
  const TemporaryFolder folder;
  EXPECT_TRUE(entriesOf(folder.path()).empty());
}

TEST(FolderDirectoryReader, NamesOfAllKinds) {
  const TemporaryFolder folder;
  const std::set<std::string> names = {
      "a", "...", ".hidden", "..a", " ", "new\nline", "\xFF\xFE", "name\t", std::string(255, 'x')};
  for (const std::string& name : names) writeAll(folder / name, "");
  std::filesystem::create_directory(folder / "folder");
  std::filesystem::create_directory_symlink(folder / "folder", folder / "link");

  const auto entries = entriesOf(folder.path());
  EXPECT_EQ(entries.size(), names.size() + 2);
  for (const std::string& name : names) EXPECT_NE(entries.at(name), Type::Folder) << name;
  EXPECT_NE(entries.at("folder"), Type::Other);
  EXPECT_NE(entries.at("link"), Type::Folder);
}

TEST(FolderDirectoryReader, MoreEntriesThanTheBufferHolds) {
  const TemporaryFolder folder;
  for (int i = 0; i < 3000; ++i) writeAll(folder / (std::to_string(i) + std::string(60, 'x')), "");
  EXPECT_EQ(entriesOf(folder.path()).size(), 3000U);
}

TEST(FolderDirectoryReader, ARemovedFolderCannotBeRead) {
  const TemporaryFolder parent;
  std::filesystem::create_directory(parent / "folder");
  const FileDescriptor folder = openFolder((parent / "folder").c_str());
  std::filesystem::remove(parent / "folder");
  DirectoryReader reader;
  reader.start(folder);
  DirectoryReader::Entry entry;
  EXPECT_FALSE(reader.next(entry));
  EXPECT_TRUE(reader.hasFailed());
}

TEST(FolderDirectoryReader, WhatIsNoFolderFailsAndTheReaderGoesOnWithTheNext) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "");
  const FileDescriptor file(open((folder / "file").c_str(), O_RDONLY | O_CLOEXEC));
  DirectoryReader reader;
  reader.start(file);
  DirectoryReader::Entry entry;
  EXPECT_FALSE(reader.next(entry));
  EXPECT_TRUE(reader.hasFailed());

  const FileDescriptor opened = openFolder(folder.path().c_str());
  reader.start(opened);
  EXPECT_TRUE(reader.next(entry));
  EXPECT_STREQ(entry.name, "file");
  EXPECT_FALSE(reader.hasFailed());
}

TEST(FolderOpening, FollowsLinksToTheFolderButNotBelowIt) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "real");
  std::filesystem::create_directory_symlink("real", folder / "link");
  writeAll(folder / "file", "");
  EXPECT_TRUE(openFolder((folder / "link").c_str()).isOpen());
  EXPECT_FALSE(openFolder((folder / "file").c_str()).isOpen());
  EXPECT_FALSE(openFolder((folder / "missing").c_str()).isOpen());

  const FileDescriptor opened = openFolder(folder.path().c_str());
  EXPECT_TRUE(openSubfolder(opened, "real").isOpen());
  EXPECT_FALSE(openSubfolder(opened, "link").isOpen());
  EXPECT_FALSE(openSubfolder(opened, "file").isOpen());
  EXPECT_FALSE(openSubfolder(FileDescriptor(), "real").isOpen());
}

}  // namespace
}  // namespace lumisk
