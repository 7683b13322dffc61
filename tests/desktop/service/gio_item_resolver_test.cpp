#include "desktop/service/gio_item_resolver.h"

#include <gtest/gtest.h>

#include "main_loop.h"

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
