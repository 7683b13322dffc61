#include "desktop/previewer_arguments.h"

#include <gtest/gtest.h>

namespace lumisk::desktop {
namespace {

SnapshotRequest snapshot(const std::vector<std::string_view>& words) {
  const PreviewerArguments arguments = parsePreviewerArguments(words);
  const auto* request = std::get_if<SnapshotRequest>(&arguments);
  EXPECT_NE(request, nullptr);
  return request == nullptr ? SnapshotRequest() : *request;
}

TEST(PreviewerArguments, FilesAreOpened) {
  for (const std::vector<std::string_view>& words :
       {std::vector<std::string_view>{"a.md", "--", "-b"}, {"open", "--", "a.md", "-b"}}) {
    const PreviewerArguments arguments = parsePreviewerArguments(words);
    ASSERT_TRUE(std::holds_alternative<OpenRequest>(arguments));
    EXPECT_EQ(std::get<OpenRequest>(arguments).paths, (std::vector<std::string>{"a.md", "-b"}));
  }
}

TEST(PreviewerArguments, FilesNamedLikeOptionsAreOpenedAfterTheEndOfOptions) {
  const PreviewerArguments arguments =
      parsePreviewerArguments({"open", "-", "--", "--help", "--", "snapshot"});
  ASSERT_TRUE(std::holds_alternative<OpenRequest>(arguments));
  EXPECT_EQ(std::get<OpenRequest>(arguments).paths,
            (std::vector<std::string>{"-", "--help", "--", "snapshot"}));
}

TEST(PreviewerArguments, HelpIsNoFile) {
  for (const std::vector<std::string_view>& words : {std::vector<std::string_view>{"--help"},
                                                     {"open", "--help"},
                                                     {"a.md", "--help"},
                                                     {"snapshot", "--help"},
                                                     {"snapshot", "a.md", "--help", "--drak"}})
    EXPECT_TRUE(std::holds_alternative<HelpRequest>(parsePreviewerArguments(words)));
}

TEST(PreviewerArguments, WrongOpeningsAreRefused) {
  const std::vector<std::string_view> rows[] = {{},
                                                {"open"},
                                                {"--"},
                                                {"open", "--"},
                                                {"--hepl"},
                                                {"-h"},
                                                {"open", "a.md", "--dark"},
                                                {"--gapplication-service", "a.md"}};
  for (const auto& words : rows)
    EXPECT_TRUE(std::holds_alternative<WrongUsage>(parsePreviewerArguments(words)));
}

TEST(PreviewerArguments, ASnapshotHasItsOptions) {
  const SnapshotRequest plain = snapshot({"snapshot", "a.md", "a.png"});
  EXPECT_EQ(plain.path, "a.md");
  EXPECT_EQ(plain.output, "a.png");
  EXPECT_FALSE(plain.isDark);
  EXPECT_FALSE(plain.size);
  EXPECT_EQ(plain.mode, "");
  const SnapshotRequest full =
      snapshot({"snapshot", "--dark", "--size", "800x600", "--mode=source", "a.md", "a.png"});
  EXPECT_TRUE(full.isDark);
  EXPECT_EQ(full.size, (Size{800, 600}));
  EXPECT_EQ(full.mode, "source");
  for (const char* mode : {"formatted", "text", "rendered", "source"})
    EXPECT_EQ(snapshot({"snapshot", "--mode", mode, "a.md", "a.png"}).mode, mode);
  EXPECT_FALSE(snapshot({"snapshot", "--dark", "--light", "a.md", "a.png"}).isDark);
  EXPECT_EQ(snapshot({"snapshot", "--", "--dark", "a.png"}).path, "--dark");
}

TEST(PreviewerArguments, WrongSnapshotsAreRefused) {
  const std::vector<std::string_view> rows[] = {
      {"snapshot"},
      {"snapshot", "a.md"},
      {"snapshot", "a.md", "b.png", "c"},
      {"snapshot", "--size", "0x5", "a.md", "a.png"},
      {"snapshot", "--size", "5", "a.md", "a.png"},
      {"snapshot", "--size", "5x", "a.md", "a.png"},
      {"snapshot", "--size", "5x5x5", "a.md", "a.png"},
      {"snapshot", "--size", "99999x5", "a.md", "a.png"},
      {"snapshot", "--size", "-5x5", "a.md", "a.png"},
      {"snapshot", "a.md", "a.png", "--mode"},
      {"snapshot", "--drak", "a.md", "a.png"},
      {"snapshot", "--mode", "bogus", "a.md", "a.png"},
      {"snapshot", "--mode=", "a.md", "a.png"},
  };
  for (const auto& words : rows)
    EXPECT_TRUE(std::holds_alternative<WrongUsage>(parsePreviewerArguments(words))) << words.back();
}

}  // namespace
}  // namespace lumisk::desktop
