#include "folder/item_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/headless/collation.h"

namespace lumisk {
namespace {

FileItem item(std::string name, bool isDirectory) {
  FileItem made;
  made.name = std::move(name);
  made.isDirectory = isDirectory;
  return made;
}

std::vector<std::string> orderOf(std::vector<FileItem> items, const Collation& collation) {
  std::vector<std::string> names;
  for (const FileItem& one : inFolderOrder(std::move(items), collation)) names.push_back(one.name);
  return names;
}

using Names = std::vector<std::string>;

TEST(FolderItemOrder, DirectoriesFirstThenNamesWithoutCase) {
  const HeadlessCollation collation("C");
  EXPECT_EQ(orderOf({item("b.txt", false), item("A", false), item("a.txt", false),
                     item("zeta", true), item("Alpha", true)},
                    collation),
            Names({"Alpha", "zeta", "A", "a.txt", "b.txt"}));
}

TEST(FolderItemOrder, NamesThatDifferInCaseKeepTheirOrder) {
  const HeadlessCollation collation("C");
  EXPECT_EQ(orderOf({item("read.me", false), item("Read.me", false)}, collation),
            Names({"read.me", "Read.me"}));
  EXPECT_EQ(orderOf({item("Read.me", false), item("read.me", false)}, collation),
            Names({"Read.me", "read.me"}));
}

TEST(FolderItemOrder, DigitsAreNotNumbers) {
  const HeadlessCollation collation("C");
  EXPECT_EQ(orderOf({item("file2", false), item("file10", false)}, collation),
            Names({"file10", "file2"}));
}

TEST(FolderItemOrder, NothingAndOne) {
  const HeadlessCollation collation("C");
  EXPECT_EQ(orderOf({}, collation), Names());
  EXPECT_EQ(orderOf({item("a", false)}, collation), Names({"a"}));
}

/// Keys as they come: the name itself.
class BytesCollation final : public Collation {
 public:
  std::string sortKey(std::string_view name) const override { return std::string(name); }
};

// Keys are compared by their first bytes as a number, then as bytes: lengths around that boundary,
// NULs and high bytes in every place must not change the order of bytes.
TEST(FolderItemOrder, KeysCompareAsBytesWhateverTheirLength) {
  Names names;
  for (std::size_t length = 0; length <= 11; ++length) {
    for (const char filler : {'\0', '\1', 'm', '\x7F', '\x80', '\xFF'}) {
      names.emplace_back(length, filler);
      names.push_back(std::string(length, 'm') + filler);
    }
  }
  std::vector<FileItem> items;
  for (auto name = names.rbegin(); name != names.rend(); ++name)
    items.push_back(item(*name, false));
  std::ranges::sort(names);
  EXPECT_EQ(orderOf(std::move(items), BytesCollation()), names);
}

/// Counts how often it is asked.
class CountingCollation final : public Collation {
 public:
  std::string sortKey(std::string_view name) const override {
    ++asked;
    return std::string(name);
  }
  mutable int asked = 0;
};

TEST(FolderItemOrder, NoneOfManyIsLostAndEqualOnesKeepTheirOrder) {
  std::vector<FileItem> items;
  for (int i = 0; i < 1000; ++i) {
    items.push_back(item(std::to_string(i * 7919 % 10), i % 3 == 0));
    items.back().size = std::to_string(i);
  }
  std::vector<FileItem> expected = items;
  std::ranges::stable_sort(expected, [](const FileItem& a, const FileItem& b) {
    return a.isDirectory != b.isDirectory ? a.isDirectory : a.name < b.name;
  });
  const auto sizes = [](const std::vector<FileItem>& all) {
    Names texts;
    for (const FileItem& one : all) texts.push_back(one.size);
    return texts;
  };
  EXPECT_EQ(sizes(inFolderOrder(std::move(items), BytesCollation())), sizes(expected));
}

TEST(FolderItemOrder, AKeyIsMadeOnceForEachItem) {
  const CountingCollation collation;
  std::vector<FileItem> items;
  for (int i = 0; i < 1000; ++i) items.push_back(item(std::to_string(i * 7919 % 1000), false));
  inFolderOrder(std::move(items), collation);
  EXPECT_EQ(collation.asked, 1000);
}

}  // namespace
}  // namespace lumisk
