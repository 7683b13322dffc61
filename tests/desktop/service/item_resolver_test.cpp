#include "desktop/service/item_resolver.h"

#include <gtest/gtest.h>

namespace lumisk::desktop {
namespace {

TEST(ItemResolver, FileAddressesArePaths) {
  struct Row {
    const char* uri;
    const char* path;
  };
  const Row rows[] = {
      {"file:///a/b.md", "/a/b.md"},
      {"file:/a/b.md", "/a/b.md"},
      {"file:///a%20b", "/a b"},
      {"file://localhost/a", "/a"},
      {"file:///a/", "/a"},
      {"file:///nowhere/at/all", "/nowhere/at/all"},
      {"file:///%ff%fe", "/\xff\xfe"},
  };
  for (const Row& row : rows) {
    const auto known = resolveWithoutAsking(row.uri);
    ASSERT_TRUE(known) << row.uri;
    const auto* url = std::get_if<FileURL>(&*known);
    ASSERT_NE(url, nullptr) << row.uri;
    EXPECT_EQ(url->path(), row.path) << row.uri;
  }
}

TEST(ItemResolver, WhatIsNoAddressIsToldSo) {
  const std::string rows[] = {
      "",
      "/a/b.md",
      "a b",
      "a/b:c",
      ":x",
      "1a:x",
      "file:///%",
      "file:a",
      "file://else/a",
      "file:///a%00",
      "é:x",
      "file:",
      "file",
      "fi le:///",
      "file:///%zz",
      "file:///" + std::string(65'536, 'a'),
  };
  for (const std::string& uri : rows) {
    const auto known = resolveWithoutAsking(uri);
    ASSERT_TRUE(known) << uri;
    const auto* reason = std::get_if<NoItemReason>(&*known);
    ASSERT_NE(reason, nullptr) << uri;
    EXPECT_EQ(*reason, NoItemReason::BadAddress) << uri;
  }
}

TEST(ItemResolver, OtherSchemesHaveToBeAskedFor) {
  for (const char* uri : {"trash:///a", "mtp://[usb:001,004]/x", "smb://server/share/a",
                          "recent:", "google-drive://x", "a+b.c-d1:", "https://example.org/"}) {
    EXPECT_FALSE(resolveWithoutAsking(uri)) << uri;
  }
}

}  // namespace
}  // namespace lumisk::desktop
