#include "platform/headless/icons.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/files.h"

namespace lumisk {
namespace {

TEST(HeadlessIcons, FilesByTheirExtension) {
  struct Row {
    const char* path;
    const char* icon;
  };
  const std::vector<Row> rows = {
      {"/a/photo.jpg", "image-x-generic"},
      {"/a/PHOTO.JPG", "image-x-generic"},
      {"/a/archive.tar.gz", "package-x-generic"},
      {"/a/song.flac", "audio-x-generic"},
      {"/a/film.mkv", "video-x-generic"},
      {"/a/page.html", "text-html"},
      {"/a/run.sh", "text-x-script"},
      {"/a/letter.odt", "x-office-document"},
      {"/a/sums.xlsx", "x-office-spreadsheet"},
      {"/a/talk.odp", "x-office-presentation"},
      {"/a/week.ics", "x-office-calendar"},
      {"/a/ada.vcf", "x-office-address-book"},
      {"/a/sans.woff2", "font-x-generic"},
      {"/a/tool.AppImage", "application-x-executable"},
      {"/a/notes.md", "text-x-generic"},
      {"/a/Makefile", "text-x-generic"},
      {"/a/.png", "text-x-generic"},
      {"/a/name.", "text-x-generic"},
      {"/a/odd.extension-that-is-long", "text-x-generic"},
      {"/a.png/file", "text-x-generic"},
      {"plain.png", "image-x-generic"},
      {"/a/\xFF.png", "image-x-generic"},
      {"", "text-x-generic"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(HeadlessIcons().iconForFile(row.path, false).name, row.icon) << row.path;
  }
}

TEST(HeadlessIcons, FoldersWhateverTheirName) {
  EXPECT_EQ(HeadlessIcons().iconForFile("/a/photo.jpg", true).name, "folder");
}

TEST(HeadlessIcons, LooksAtTheDiskWhenNothingIsKnown) {
  const test::TemporaryFolder folder;
  std::filesystem::create_directory(folder / "pictures.png");
  std::filesystem::create_directory_symlink(folder / "pictures.png", folder / "link");
  test::writeAll(folder / "tool", "");
  test::writeAll(folder / "plain", "");
  chmod((folder / "tool").c_str(), 0755);
  const auto icon = [&](const char* name) {
    return HeadlessIcons().iconForFile((folder / name).native(), std::nullopt).name;
  };
  EXPECT_EQ(icon("pictures.png"), "folder");
  EXPECT_EQ(icon("link"), "folder");
  EXPECT_EQ(icon("tool"), "application-x-executable");
  EXPECT_EQ(icon("plain"), "text-x-generic");
  EXPECT_EQ(icon("missing"), "text-x-generic");
  EXPECT_EQ(icon("missing.png"), "image-x-generic");
}

}  // namespace
}  // namespace lumisk
