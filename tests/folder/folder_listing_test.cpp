#include "folder/folder_listing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "folder_fixtures.h"
#include "platform/file_descriptor.h"

namespace lumisk {
namespace {

using test::ManualPlatform;
using test::setDate;
using test::TemporaryFolder;
using test::writeAll;
using Names = std::vector<std::string>;

std::optional<FolderListing> list(const std::filesystem::path& folder, const Platform& platform) {
  return listFolder(folder.native(), *platform.makeDateFormatter(), platform);
}

FolderListing listed(const std::filesystem::path& folder) {
  const ManualPlatform desktop;
  auto listing = list(folder, desktop.platform);
  EXPECT_TRUE(listing.has_value());
  return listing.value_or(FolderListing{});
}

Names namesOf(const FolderListing& listing) {
  Names names;
  for (const FileItem& item : listing.items) names.push_back(item.name);
  return names;
}

FileItem itemNamed(const FolderListing& listing, const std::string& name) {
  for (const FileItem& item : listing.items) {
    if (item.name == name) return item;
  }
  ADD_FAILURE() << "no item " << name;
  return {};
}

TEST(FolderListing, EmptyFolder) {
  const TemporaryFolder folder;
  const FolderListing listing = listed(folder.path());
  EXPECT_TRUE(listing.items.empty());
  EXPECT_EQ(listing.hiddenCount, 0);
}

TEST(FolderListing, HiddenEntriesAreCountedAndLeftOut) {
  const TemporaryFolder folder;
  writeAll(folder / ".DS_Store", "x");
  std::filesystem::create_directory(folder / ".git");
  writeAll(folder / "listed", "x");
  writeAll(folder / "shown", "x");
  writeAll(folder / ".hidden", "listed\nnot there\n");
  const FolderListing listing = listed(folder.path());
  EXPECT_EQ(namesOf(listing), Names({"shown"}));
  EXPECT_EQ(listing.hiddenCount, 4);
}

TEST(FolderListing, DirectoriesFirstThenNamesWithoutCase) {
  const TemporaryFolder folder;
  for (const char* name : {"b.txt", "A", "a.txt"}) writeAll(folder / name, "");
  std::filesystem::create_directory(folder / "zeta");
  EXPECT_EQ(namesOf(listed(folder.path())), Names({"zeta", "A", "a.txt", "b.txt"}));
}

TEST(FolderListing, NamesThatDifferInCaseKeepTheFileSystemsOrder) {
  const TemporaryFolder folder;
  std::vector<std::string> names;
  for (const char* name : {"read.me", "Read.me", "READ.me", "read.ME"}) writeAll(folder / name, "");
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    names.push_back(entry.path().filename().native());
  }
  EXPECT_EQ(namesOf(listed(folder.path())), names);
}

TEST(FolderListing, AFilesColumns) {
  const TemporaryFolder folder;
  writeAll(folder / "photo.jpg", std::string(1536, 'x'));
  setDate(folder / "photo.jpg", 1795269900);
  const FileItem item = itemNamed(listed(folder.path()), "photo.jpg");
  EXPECT_EQ(item.icon.name, "image-x-generic");
  EXPECT_EQ(item.size, "2 KB");
  EXPECT_EQ(item.date, "21 Nov 2026, 14:05");
  EXPECT_FALSE(item.isDirectory);
}

TEST(FolderListing, ADirectorysColumns) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub.jpg");
  writeAll(folder / "sub.jpg/file", "x");
  setDate(folder / "sub.jpg", 1795269900);
  const FileItem item = itemNamed(listed(folder.path()), "sub.jpg");
  EXPECT_EQ(item.icon.name, "folder");
  EXPECT_EQ(item.size, "—");
  EXPECT_EQ(item.date, "21 Nov 2026, 14:05");
  EXPECT_TRUE(item.isDirectory);
}

TEST(FolderListing, SizesAreLogical) {
  const TemporaryFolder folder;
  writeAll(folder / "empty", "");
  writeAll(folder / "one byte", "x");
  writeAll(folder / "sparse", "");
  std::filesystem::resize_file(folder / "sparse", 5 * (std::uintmax_t{1} << 30));
  const FolderListing listing = listed(folder.path());
  EXPECT_EQ(itemNamed(listing, "empty").size, "0 B");
  EXPECT_EQ(itemNamed(listing, "one byte").size, "1 B");
  EXPECT_EQ(itemNamed(listing, "sparse").size, "5.0 GB");
}

TEST(FolderListing, DatesBeforeAndAfterTheUsual) {
  const TemporaryFolder folder;
  struct Row {
    const char* name;
    std::time_t seconds;
    const char* date;
  };
  const std::vector<Row> rows = {
      {"before 1970", -86400, "31 Dec 1969, 00:00"},
      {"after 2038", 2147483648, "19 Jan 2038, 03:14"},
      {"after 2106", 4294967296 + 86400, "8 Feb 2106, 06:28"},
  };
  for (const Row& row : rows) {
    writeAll(folder / row.name, "");
    setDate(folder / row.name, row.seconds);
  }
  const FolderListing listing = listed(folder.path());
  for (const Row& row : rows) {
    struct stat status {};
    ASSERT_EQ(lstat((folder / row.name).c_str(), &status), 0);
    if (status.st_mtime != row.seconds) {
      std::printf("this file system cannot say %s\n", row.name);
    } else {
      EXPECT_EQ(itemNamed(listing, row.name).date, row.date);
    }
  }
}

TEST(FolderListing, LinksAreFilesOfTheirOwn) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "real");
  std::filesystem::create_directory_symlink("real", folder / "to folder");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  std::filesystem::create_symlink("loop", folder / "loop");
  const FolderListing listing = listed(folder.path());
  EXPECT_EQ(namesOf(listing), Names({"real", "dangling", "loop", "to folder"}));
  EXPECT_EQ(itemNamed(listing, "to folder").size, "4 B");
  EXPECT_EQ(itemNamed(listing, "dangling").size, "7 B");
  EXPECT_NE(itemNamed(listing, "loop").date, "—");
}

TEST(FolderListing, ALinkToAFolderHasAFoldersIcon) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "real");
  writeAll(folder / "file", "");
  std::filesystem::create_directory_symlink("real", folder / "to folder.md");
  std::filesystem::create_symlink("to folder.md", folder / "to link");
  std::filesystem::create_symlink("file", folder / "to file");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  std::filesystem::create_symlink("loop", folder / "loop");
  const FolderListing listing = listed(folder.path());
  const Icon folderIcon = itemNamed(listing, "real").icon;
  for (const char* name : {"to folder.md", "to link"}) {
    EXPECT_EQ(itemNamed(listing, name).icon, folderIcon) << name;
    EXPECT_FALSE(itemNamed(listing, name).isDirectory) << name;
  }
  for (const char* name : {"file", "to file", "dangling", "loop"})
    EXPECT_NE(itemNamed(listing, name).icon, folderIcon) << name;
}

TEST(FolderListing, PipesSocketsAndDevicesAreListedWithoutBeingOpened) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  ASSERT_EQ(mknod((folder / "socket").c_str(), S_IFSOCK | 0600, 0), 0);
  const FolderListing listing = listed(folder.path());
  for (const char* name : {"pipe", "socket"}) {
    EXPECT_EQ(itemNamed(listing, name).size, "0 B") << name;
    EXPECT_FALSE(itemNamed(listing, name).isDirectory) << name;
  }
  const FolderListing devices = listed("/dev");
  EXPECT_EQ(itemNamed(devices, "null").size, "0 B");
}

TEST(FolderListing, NamesAreTheFileSystemsBytes) {
  const TemporaryFolder folder;
  const std::set<std::string> names = {
      "two\nlines.md", "\xFF\xFE.txt", " ",          "tab\t", "é",
      "e\u0301",       "%s%lld",       "\"quoted\"", "\\",    std::string(255, 'x')};
  for (const std::string& name : names) writeAll(folder / name, "");
  const Names found = namesOf(listed(folder.path()));
  EXPECT_EQ(std::set<std::string>(found.begin(), found.end()), names);
  EXPECT_EQ(found.size(), names.size());
}

TEST(FolderListing, WhatCannotBeListed) {
  const TemporaryFolder folder;
  const ManualPlatform desktop;
  writeAll(folder / "file", "");
  EXPECT_FALSE(list(folder / "missing", desktop.platform));
  EXPECT_FALSE(list(folder / "file", desktop.platform));
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  std::filesystem::create_directory(folder / "closed");
  std::filesystem::permissions(folder / "closed", std::filesystem::perms::none);
  {
    const test::WithoutPrivileges nobody;
    EXPECT_FALSE(list(folder / "closed", desktop.platform));
  }
  std::filesystem::permissions(folder / "closed", std::filesystem::perms::all);
}

TEST(FolderListing, EntriesThatCannotBeLookedAtAreListedAsUnknown) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  std::filesystem::create_directory(folder / "names only");
  writeAll(folder / "names only/photo.png", "x");
  writeAll(folder / "names only/.hidden file", "x");
  std::filesystem::create_directory(folder / "names only/sub");
  std::filesystem::permissions(folder / "names only", test::kNamesOnly);
  {
    const test::WithoutPrivileges nobody;
    const FolderListing listing = listed(folder / "names only");
    EXPECT_EQ(namesOf(listing), Names({".hidden file", "photo.png", "sub"}));
    EXPECT_EQ(listing.hiddenCount, 0);
    for (const FileItem& item : listing.items) {
      EXPECT_EQ(item.size, "?") << item.name;
      EXPECT_EQ(item.date, "—") << item.name;
      EXPECT_FALSE(item.isDirectory) << item.name;
    }
    EXPECT_EQ(itemNamed(listing, "photo.png").icon.name, "image-x-generic");
  }
  std::filesystem::permissions(folder / "names only", std::filesystem::perms::all);
}

/// Empties the folder when asked about it, which is after its names were read.
class EmptyingHiddenNames final : public HiddenNames {
 public:
  std::function<bool(std::string_view)> inFolder(std::string_view folderPath) const override {
    for (const auto& entry : std::filesystem::directory_iterator(folderPath)) {
      std::filesystem::remove_all(entry.path());
    }
    return [](std::string_view name) { return name.starts_with('.'); };
  }
};

TEST(FolderListing, EntriesThatVanishMeanwhileAreListedAsUnknown) {
  const TemporaryFolder folder;
  writeAll(folder / "a", "x");
  std::filesystem::create_directory(folder / "b");
  const ManualPlatform desktop;
  const Platform& full = desktop.platform;
  const EmptyingHiddenNames emptying;
  const Platform platform{
      full.mainQueue, full.backgroundQueue, full.appearance, full.strings, full.makeDateFormatter,
      full.collation, full.icons,           emptying,        full.caches,  full.standardOutput};
  const auto listing = list(folder.path(), platform);
  ASSERT_TRUE(listing);
  EXPECT_EQ(namesOf(*listing), Names({"a", "b"}));
  EXPECT_EQ(listing->items[0].size, "?");
  EXPECT_EQ(listing->items[1].size, "?");
  EXPECT_EQ(listing->items[1].date, "—");
}

TEST(FolderListing, EachLoadHasFreshIdentifiers) {
  const TemporaryFolder folder;
  for (int i = 0; i < 50; ++i) writeAll(folder / std::to_string(i), "");
  std::set<std::string> seen;
  const FolderListing first = listed(folder.path());
  const FolderListing second = listed(folder.path());
  EXPECT_EQ(namesOf(first), namesOf(second));
  for (const FolderListing* listing : {&first, &second}) {
    for (const FileItem& item : listing->items) seen.insert(item.id.text());
  }
  EXPECT_EQ(seen.size(), 100U);
}

TEST(FolderListing, AHundredThousandEntries) {
  const TemporaryFolder folder;
  constexpr int kCount = 100'000;
  const FileDescriptor opened(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (int i = 0; i < kCount; ++i) {
    const std::string name = std::to_string(i * 7919LL % kCount);
    ASSERT_EQ(mknodat(opened.get(), name.c_str(), S_IFREG | 0600, 0), 0);
  }
  const FolderListing listing = listed(folder.path());
  EXPECT_EQ(listing.items.size(), static_cast<std::size_t>(kCount));
  EXPECT_TRUE(std::ranges::is_sorted(namesOf(listing)));
}

TEST(FolderListing, AsksForIconsByPathAndKind) {
  class RecordingIcons final : public Icons {
   public:
    Icon iconForFile(std::string_view path, std::optional<bool> isDirectory) const override {
      asked[std::string(path)] = isDirectory;
      return {"icon"};
    }
    mutable std::map<std::string, std::optional<bool>> asked;
  };
  const TemporaryFolder folder;
  writeAll(folder / "file", "");
  writeAll(folder / ".hidden", "");
  std::filesystem::create_directory(folder / "sub");
  const ManualPlatform desktop;
  const Platform& full = desktop.platform;
  const RecordingIcons icons;
  const Platform platform{full.mainQueue,
                          full.backgroundQueue,
                          full.appearance,
                          full.strings,
                          full.makeDateFormatter,
                          full.collation,
                          icons,
                          full.hiddenNames,
                          full.caches,
                          full.standardOutput};
  EXPECT_TRUE(list(folder.path(), platform));
  const std::map<std::string, std::optional<bool>> expected = {{folder / "file", false},
                                                               {folder / "sub", true}};
  EXPECT_EQ(icons.asked, expected);
}

}  // namespace
}  // namespace lumisk
