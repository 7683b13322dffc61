#include "platform/argument_url.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/files.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;

/// In a folder that holds "a:" with "b" in it, "a:b" and "file:".
class ArgumentAddress : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(folder_ / "a:");
    for (const char* name : {"a:/b", "a:b", "file:"}) test::writeAll(folder_ / name, "x");
    before_ = fs::current_path();
    fs::current_path(folder_.path());
    base_ = "file://" + folder_.path().string();
  }
  void TearDown() override { fs::current_path(before_); }

  std::string base_;

 private:
  test::TemporaryFolder folder_;
  fs::path before_;
};

TEST_F(ArgumentAddress, PathsAndAddressesAreToldApart) {
  struct Row {
    const char* argument;
    std::string address;
  };
  const Row rows[] = {
      {"/x y", "file:///x%20y"},
      {"a:b", base_ + "/a:b"},
      {"a:/b", base_ + "/a:/b"},
      {"a:/c", "a:/c"},
      {"a:c", base_ + "/a:c"},
      {"./file:", base_ + "/file:"},
      {"FILE:///x", "file:///x"},
      {"trash:///x%20y", "trash:///x%20y"},
      {"google-drive://me@example.org/x", "google-drive://me@example.org/x"},
      {"1:/x", base_ + "/1:/x"},
      {":/x", base_ + "/:/x"},
      {"a b:/x", base_ + "/a%20b:/x"},
      {"x", base_ + "/x"},
  };
  for (const Row& row : rows) EXPECT_EQ(addressOfArgument(row.argument), row.address);
}

TEST_F(ArgumentAddress, AFileURIThatNamesNoFileHereIsNoAddress) {
  for (const char* argument : {"file:", "file:x", "file://elsewhere/x", "file:///%zz"}) {
    EXPECT_EQ(addressOfArgument(argument), std::nullopt) << argument;
  }
}

TEST_F(ArgumentAddress, WhatTheBusCannotCarryIsNoAddress) {
  EXPECT_EQ(addressOfArgument("trash:///\xFF"), std::nullopt);
  EXPECT_EQ(addressOfArgument("trash:///%FF"), "trash:///%FF");
  EXPECT_EQ(addressOfArgument("trash:///\xC3\xA9"), "trash:///\xC3\xA9");
  EXPECT_EQ(addressOfArgument("/\xFF"), "file:///%FF") << "a path need not be text";
}

}  // namespace
}  // namespace lumisk
