#include "desktop/service/gio_item_resolver.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "main_loop.h"
#include "remote_file.h"

namespace lumisk::desktop {
namespace {

std::optional<ItemOrReason> resolved(const std::string& uri) {
  GioItemResolver resolver;
  std::optional<ItemOrReason> found;
  resolver.resolve(uri, [&](ItemOrReason item) { found = std::move(item); });
  EXPECT_TRUE(test::runUntil([&] { return found.has_value(); })) << uri;
  return found;
}

TEST(GioItemResolver, FilesNeedNoQuestion) {
  GioItemResolver resolver;
  std::optional<ItemOrReason> found;
  resolver.resolve("file:///nowhere/a.md", [&](ItemOrReason item) { found = std::move(item); });
  ASSERT_TRUE(found);
  EXPECT_EQ(std::get<FileURL>(*found), FileURL::fromPath("/nowhere/a.md"));
}

TEST(GioItemResolver, WhatNoFileSystemKnowsIsNotLocal) {
  for (const char* uri : {"nowhere:", "nowhere:///a", "nowhere://[::1]:9/a%20b"}) {
    const auto found = resolved(uri);
    ASSERT_TRUE(found);
    EXPECT_EQ(std::get<NoItemReason>(*found), NoItemReason::NotLocal) << uri;
  }
}

TEST(GioItemResolver, WhatAPathLeadsToIsFound) {
  test::offerRemoteItem("test-mounted", {.path = "/run/shares/a b.md"});
  test::offerRemoteItem("test-trash", {.target = "file:///home/ada/.trash/a%20b.md"});
  test::offerRemoteItem("test-recent", {.target = "test-mounted://server/a%20b.md"});
  struct Row {
    const char* uri;
    const char* path;
  };
  const Row rows[] = {
      {"test-mounted://server/share/a%20b.md", "/run/shares/a b.md"},
      {"test-trash:///a%20b.md", "/home/ada/.trash/a b.md"},
      {"test-recent:///1234", "/run/shares/a b.md"},
  };
  for (const Row& row : rows) {
    const auto found = resolved(row.uri);
    ASSERT_TRUE(found);
    const auto* url = std::get_if<FileURL>(&*found);
    ASSERT_NE(url, nullptr) << row.uri;
    EXPECT_EQ(url->path(), row.path);
  }
}

TEST(GioItemResolver, WhatNoPathLeadsToIsTold) {
  test::offerRemoteItem("test-phone", {});
  test::offerRemoteItem("test-far", {.target = "test-phone:///a"});
  test::offerRemoteItem("test-unknown", {.error = G_IO_ERROR_NOT_SUPPORTED});
  test::offerRemoteItem("test-unplugged", {.error = G_IO_ERROR_NOT_MOUNTED});
  test::offerRemoteItem("test-gone", {.error = G_IO_ERROR_NOT_FOUND});
  test::offerRemoteItem("test-forbidden", {.error = G_IO_ERROR_PERMISSION_DENIED});
  struct Row {
    const char* uri;
    NoItemReason reason;
  };
  const Row rows[] = {
      {"test-phone://[usb:001,004]/a.md", NoItemReason::NotLocal},
      {"test-far:///a.md", NoItemReason::NotLocal},
      {"test-unknown:///a.md", NoItemReason::NotLocal},
      {"test-unplugged:///a.md", NoItemReason::Unreachable},
      {"test-gone:///a.md", NoItemReason::Unreachable},
      {"test-forbidden:///a.md", NoItemReason::Unreachable},
  };
  for (const Row& row : rows) {
    const auto found = resolved(row.uri);
    ASSERT_TRUE(found);
    ASSERT_TRUE(std::holds_alternative<NoItemReason>(*found)) << row.uri;
    EXPECT_EQ(std::get<NoItemReason>(*found), row.reason) << row.uri;
  }
}

TEST(GioItemResolver, AFileInsideTheProgramHasNoPath) {
  const auto found = resolved("resource:///org/nowhere");
  ASSERT_TRUE(found);
  EXPECT_TRUE(std::holds_alternative<NoItemReason>(*found));
}

TEST(GioItemResolver, ANewQuestionSilencesTheOneBefore) {
  GioItemResolver resolver;
  int stale = 0;
  std::optional<ItemOrReason> found;
  for (int i = 0; i < 20; ++i) resolver.resolve("nowhere:a", [&](ItemOrReason) { ++stale; });
  resolver.resolve("nowhere:b", [&](ItemOrReason item) { found = std::move(item); });
  EXPECT_TRUE(test::runUntil([&] { return found.has_value(); }));
  EXPECT_EQ(stale, 0);
}

TEST(GioItemResolver, NobodyIsCalledAfterItHasGone) {
  int called = 0;
  {
    GioItemResolver resolver;
    resolver.resolve("nowhere:a", [&](ItemOrReason) { ++called; });
  }
  test::runPending();
  EXPECT_EQ(called, 0);
}

}  // namespace
}  // namespace lumisk::desktop
