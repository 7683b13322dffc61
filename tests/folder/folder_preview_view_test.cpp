#include "folder/folder_preview_view.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "folder_fixtures.h"
#include "support/fake_strings.h"
#include "ui/outline.h"

namespace lumisk {
namespace {

using test::ManualPlatform;
using test::setDate;
using test::writeAll;

/// A folder "Notes", which the expected files place in "/home/ada".
class FolderPreviewViewTest : public testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directory(notes_); }

  /// An entry without a block on disk, however large it says it is.
  void addFile(const std::string& name, std::uintmax_t size, std::time_t date) const {
    writeAll(notes_ / name, "");
    std::filesystem::resize_file(notes_ / name, size);
    setDate(notes_ / name, date);
  }
  void addFolder(const std::string& name, std::time_t date) const {
    std::filesystem::create_directory(notes_ / name);
    setDate(notes_ / name, date);
  }

  FolderPreviewView makeView() {
    return {FileURL::fromPath(notes_.native() + "/"), desktop_.platform};
  }
  void settle() {
    desktop_.backgroundQueue.runAll();
    desktop_.mainQueue.runAll();
  }

  void expectOutline(const FolderPreviewView& view, const std::string& file) const {
    std::string text = ui::outline(view.body());
    const std::string place = notes_.parent_path().native();
    for (auto at = text.find(place); at != std::string::npos; at = text.find(place)) {
      text.replace(at, place.size(), "/home/ada");
    }
    test::expectFile(std::filesystem::path(LUMISK_SOURCE "/tests/expected") / file, text);
  }

  test::TemporaryFolder home_;
  std::filesystem::path notes_ = home_ / "Notes";
  ManualPlatform desktop_;
};

TEST_F(FolderPreviewViewTest, NothingKnownYet) {
  expectOutline(makeView(), "folder_nothing_known.outline");
}

TEST_F(FolderPreviewViewTest, AFolderWithEntriesOfAllKinds) {
  addFile("b.txt", 1536, 1795269900);
  addFile("A", 0, 0);
  addFile("a.txt", 1, -86400);
  addFile("Photo.JPG", std::uintmax_t{5} << 30, 4294967296);
  addFile("two\nlines.md", 1048575, 1795269900);
  addFile("\xFF.csv", 1024, 1795269900);
  addFile(".DS_Store", 6148, 1795269900);
  addFolder("zeta", 1795269900);
  addFolder("Alpha.zip", 951782400);
  std::filesystem::create_symlink("zeta", notes_ / "link");
  setDate(notes_ / "link", 1795269900);
  setDate(notes_, 1795269900);
  FolderPreviewView view = makeView();
  view.onAppear();
  settle();
  expectOutline(view, "folder_entries.outline");
}

TEST_F(FolderPreviewViewTest, AnEmptyFolder) {
  setDate(notes_, 1795269900);
  FolderPreviewView view = makeView();
  view.onAppear();
  settle();
  expectOutline(view, "folder_empty.outline");
}

TEST_F(FolderPreviewViewTest, AFolderWithHiddenEntriesOnly) {
  addFile(".DS_Store", 6148, 1795269900);
  addFile(".git", 0, 1795269900);
  setDate(notes_, 1795269900);
  FolderPreviewView view = makeView();
  view.onAppear();
  desktop_.mainQueue.runAll();
  expectOutline(view, "folder_hidden_only_without_size.outline");
}

TEST_F(FolderPreviewViewTest, ALongNameStaysOnOneLineBesideItsColumns) {
  addFile(std::string(255, 'n'), 1, 0);
  setDate(notes_, 1795269900);
  FolderPreviewView view = makeView();
  view.onAppear();
  settle();
  expectOutline(view, "folder_long_name.outline");
}

TEST_F(FolderPreviewViewTest, MissingTextsShowTheirKeys) {
  const Platform& full = desktop_.platform;
  const test::FakeStrings strings;
  const Platform platform{
      full.mainQueue, full.backgroundQueue, full.appearance,  strings,     full.makeDateFormatter,
      full.collation, full.icons,           full.hiddenNames, full.caches, full.standardOutput};
  addFile(".DS_Store", 0, 0);
  setDate(notes_, 1795269900);
  FolderPreviewView view(FileURL::fromPath(notes_.native() + "/"), platform);
  view.onAppear();
  settle();
  expectOutline(view, "folder_missing_texts.outline");
}

TEST_F(FolderPreviewViewTest, BodiesOfOneStateAreEqualAndShareTheirRows) {
  addFile("a", 0, 0);
  FolderPreviewView view = makeView();
  view.onAppear();
  settle();
  const ui::View first = view.body();
  EXPECT_EQ(first, view.body());
  view.onAppear();
  settle();
  EXPECT_NE(first, view.body()) << "a new listing is a new list";
}

TEST_F(FolderPreviewViewTest, TheRootFolderHasAName) {
  const FolderPreviewView view(FileURL::fromPath("/"), desktop_.platform);
  const std::string text = ui::outline(view.body());
  EXPECT_NE(text.find("image file=\"/\""), std::string::npos);
  EXPECT_NE(text.find("text \"/\" font=headline"), std::string::npos);
}

}  // namespace
}  // namespace lumisk
