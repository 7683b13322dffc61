#include "platform/headless/caches_directory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "test_environment.h"

namespace lumisk {
namespace {

TEST(XdgCachesDirectory, FollowsTheConvention) {
  struct Row {
    const char* label;
    const char* caches;
    const char* home;
    std::optional<std::string> path;
  };
  const std::vector<Row> rows = {
      {"set", "/var/caches", "/home/ada", "/var/caches"},
      {"set with a slash", "/var/caches/", "/home/ada", "/var/caches"},
      {"relative, so ignored", "caches", "/home/ada", "/home/ada/.cache"},
      {"empty", "", "/home/ada", "/home/ada/.cache"},
      {"not set", nullptr, "/home/ada", "/home/ada/.cache"},
      {"home with a slash", nullptr, "/home/ada/", "/home/ada/.cache"},
      {"home is the root", nullptr, "/", "/.cache"},
      {"no home", nullptr, nullptr, std::nullopt},
      {"empty home", nullptr, "", std::nullopt},
      {"relative home", nullptr, "ada", std::nullopt},
      {"no home, but caches", "/var/caches", nullptr, "/var/caches"},
  };
  for (const Row& row : rows) {
    const test::ScopedVariable caches("XDG_CACHE_HOME", row.caches);
    const test::ScopedVariable home("HOME", row.home);
    EXPECT_EQ(XdgCachesDirectory().path(), row.path) << row.label;
  }
}

}  // namespace
}  // namespace lumisk
