#include "folder/folder_loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "folder/folder_preview_view.h"
#include "folder_fixtures.h"
#include "ui/hosted_view.h"

namespace lumisk {
namespace {

using test::ManualPlatform;
using test::setDate;
using test::TemporaryFolder;
using test::writeAll;

constexpr std::time_t kDate = 1795269900;
constexpr const char* kDateText = "21 Nov 2026, 14:05";

FileURL urlOf(const std::filesystem::path& folder) {
  return FileURL::fromPath(folder.native() + "/");
}

/// A folder with one visible entry and one hidden one, neither of which occupies a block.
class FolderLoader : public testing::Test {
 protected:
  void SetUp() override {
    writeAll(folder_ / "a", "");
    writeAll(folder_ / ".hidden file", "");
    setDate(folder_.path(), kDate);
  }

  TemporaryFolder folder_;
  ManualPlatform desktop_;
};

void expectLoaded(const FolderState& state) {
  EXPECT_EQ(state.folderDateStr, kDateText);
  EXPECT_EQ(state.folderSizeStr, "0 B");
  EXPECT_EQ(state.totalCount, 1);
  EXPECT_EQ(state.hiddenCount, 1);
  ASSERT_EQ(state.items->count(), 1U);
  EXPECT_EQ(state.items->all()[0].name, "a");
}

TEST_F(FolderLoader, MakingAViewReadsNothing) {
  const FolderPreviewView view(FileURL::fromPath("/nowhere/at/all/"), desktop_.platform);
  EXPECT_EQ(desktop_.mainQueue.size(), 0U);
  EXPECT_EQ(desktop_.backgroundQueue.size(), 0U);
  EXPECT_TRUE(view.state().items->empty());
  EXPECT_EQ(view.state().totalCount, 0);
  EXPECT_EQ(view.state().hiddenCount, 0);
  EXPECT_EQ(view.state().folderSizeStr, std::nullopt);
  EXPECT_EQ(view.state().folderDateStr, std::nullopt);
}

TEST_F(FolderLoader, NothingIsPublishedBeforeTheMainQueuesTurn) {
  FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
  view.onAppear();
  EXPECT_EQ(desktop_.mainQueue.size(), 2U) << "the date and the listing";
  EXPECT_EQ(desktop_.backgroundQueue.size(), 1U) << "the size";
  EXPECT_TRUE(view.state().items->empty());
  EXPECT_EQ(view.state().folderDateStr, std::nullopt);

  desktop_.mainQueue.runAll();
  EXPECT_EQ(view.state().totalCount, 1);
  EXPECT_EQ(view.state().folderDateStr, kDateText);
  EXPECT_EQ(view.state().folderSizeStr, std::nullopt);

  desktop_.backgroundQueue.runAll();
  EXPECT_EQ(view.state().folderSizeStr, std::nullopt);
  desktop_.mainQueue.runAll();
  expectLoaded(view.state());
}

TEST_F(FolderLoader, ThePublicationsLandInAnyOrder) {
  std::vector<std::size_t> order = {0, 1, 2};
  int orders = 0;
  do {
    FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
    int changes = 0;
    view.setOnChange([&] { ++changes; });
    view.onAppear();
    desktop_.backgroundQueue.runAll();
    const std::vector<Task> publications = desktop_.mainQueue.take();
    ASSERT_EQ(publications.size(), 3U);
    for (const std::size_t which : order) {
      publications[which]();
      EXPECT_EQ(changes > 0, true);
    }
    expectLoaded(view.state());
    EXPECT_EQ(changes, 3) << "each of them redraws";
    ++orders;
  } while (std::ranges::next_permutation(order).found);
  EXPECT_EQ(orders, 6);
}

TEST_F(FolderLoader, EachPublicationWritesItsOwnFieldsOnly) {
  FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
  view.onAppear();
  desktop_.backgroundQueue.runAll();
  const std::vector<Task> publications = desktop_.mainQueue.take();
  ASSERT_EQ(publications.size(), 3U);
  publications[2]();
  EXPECT_EQ(view.state().folderSizeStr, "0 B");
  EXPECT_EQ(view.state().folderDateStr, std::nullopt);
  EXPECT_EQ(view.state().totalCount, 0);
  publications[0]();
  EXPECT_EQ(view.state().folderDateStr, kDateText);
  EXPECT_EQ(view.state().totalCount, 0);
}

TEST_F(FolderLoader, TheDateIsFormattedWhenItLands) {
  FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
  view.onAppear();
  setDate(folder_.path(), 0);  // read already
  desktop_.mainQueue.runAll();
  EXPECT_EQ(view.state().folderDateStr, kDateText);
}

/// Counts the dates it is given.
class CountingDateFormatter final : public DateFormatter {
 public:
  std::string stringFromDate(FileTime /*date*/) const override { return std::to_string(++count); }
  mutable int count = 0;
};

TEST_F(FolderLoader, OneFormatterMakesAllDatesTheFoldersInsideItsBlock) {
  int made = 0;
  auto formatter = std::make_shared<CountingDateFormatter>();
  desktop_.platform.makeDateFormatter = [&] {
    ++made;
    return formatter;
  };
  FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
  view.onAppear();
  EXPECT_EQ(formatter->count, 1) << "the one entry";
  desktop_.mainQueue.runAll();
  EXPECT_EQ(formatter->count, 2) << "and the folder";
  EXPECT_EQ(view.state().folderDateStr, "2");
  EXPECT_EQ(made, 1);
}

TEST_F(FolderLoader, BlocksMayLandAfterTheViewHasGone) {
  {
    FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
    view.setOnChange([] { FAIL() << "nobody is left to draw"; });
    view.onAppear();
    view.setOnChange({});  // what a host does at the end
  }
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  EXPECT_EQ(desktop_.mainQueue.size(), 0U);
}

// The state's last owner ends it, so that must not be a background thread.
TEST_F(FolderLoader, TheSizeTaskHandsTheStateOver) {
  std::weak_ptr<const DateFormatter> partOfTheState;
  {
    FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
    partOfTheState = view.state().dateFormatter;
    view.onAppear();
  }
  const std::vector<Task> sizeTask = desktop_.backgroundQueue.take();
  sizeTask.at(0)();
  EXPECT_FALSE(partOfTheState.expired()) << "the publication has it";
  desktop_.mainQueue.runAll();
  EXPECT_TRUE(partOfTheState.expired()) << "the task, which is still there, has not";
}

TEST_F(FolderLoader, AHostMayLetGoOfTheViewWhileItIsTold) {
  auto hosted =
      std::make_unique<ui::HostedView>(FolderPreviewView(urlOf(folder_.path()), desktop_.platform));
  hosted->onAppear();
  hosted->setOnChange([&] { hosted.reset(); });
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  EXPECT_EQ(hosted, nullptr);
}

TEST_F(FolderLoader, AppearingTwiceReplacesTheRows) {
  FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
  view.onAppear();
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  const auto first = view.state().items;
  view.onAppear();
  EXPECT_EQ(view.state().items, first) << "kept until the new ones land";
  EXPECT_EQ(view.state().folderSizeStr, "0 B") << "never absent again";
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  expectLoaded(view.state());
  EXPECT_NE(view.state().items, first);
  EXPECT_NE(view.state().items->all()[0].id, first->all()[0].id);
}

TEST_F(FolderLoader, ALaterAppearanceSeesWhatChanged) {
  FolderPreviewView view(urlOf(folder_.path()), desktop_.platform);
  view.onAppear();
  desktop_.mainQueue.runAll();
  writeAll(folder_ / "b", "");
  std::filesystem::remove(folder_ / ".hidden file");
  view.onAppear();
  desktop_.mainQueue.runAll();
  EXPECT_EQ(view.state().totalCount, 2);
  EXPECT_EQ(view.state().hiddenCount, 0);
}

TEST_F(FolderLoader, AMissingFolderHasASizeOfNothing) {
  FolderPreviewView view(urlOf(folder_ / "missing"), desktop_.platform);
  view.onAppear();
  EXPECT_EQ(desktop_.mainQueue.size(), 0U) << "neither date nor listing";
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  EXPECT_EQ(view.state().folderSizeStr, "0 B");
  EXPECT_EQ(view.state().folderDateStr, std::nullopt);
  EXPECT_TRUE(view.state().items->empty());
}

TEST_F(FolderLoader, AFolderThatVanishesKeepsWhatItShowed) {
  std::filesystem::create_directory(folder_ / "sub");
  writeAll(folder_ / "sub/a", "");
  writeAll(folder_ / "sub/.hidden file", "");
  setDate(folder_ / "sub", kDate);
  FolderPreviewView view(urlOf(folder_ / "sub"), desktop_.platform);
  view.onAppear();
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  std::filesystem::remove_all(folder_ / "sub");
  view.onAppear();
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  expectLoaded(view.state());
}

TEST_F(FolderLoader, AFileInTheFoldersPlaceHasADateAndNoEntries) {
  writeAll(folder_ / "file", "x");
  setDate(folder_ / "file", kDate);
  FolderPreviewView view(urlOf(folder_ / "file"), desktop_.platform);
  view.onAppear();
  desktop_.backgroundQueue.runAll();
  desktop_.mainQueue.runAll();
  EXPECT_EQ(view.state().folderDateStr, kDateText);
  EXPECT_EQ(view.state().folderSizeStr, "0 B");
  EXPECT_TRUE(view.state().items->empty());
}

TEST_F(FolderLoader, AnUnreadableFolderHasADateAndASizeOfNothing) {
  std::filesystem::permissions(folder_.path(), std::filesystem::perms::all);
  std::filesystem::create_directory(folder_ / "closed");
  setDate(folder_ / "closed", kDate);
  std::filesystem::permissions(folder_ / "closed", std::filesystem::perms::none);
  FolderPreviewView view(urlOf(folder_ / "closed"), desktop_.platform);
  {
    const test::WithoutPrivileges nobody;
    view.onAppear();
    desktop_.backgroundQueue.runAll();
  }
  desktop_.mainQueue.runAll();
  EXPECT_EQ(view.state().folderDateStr, kDateText);
  EXPECT_EQ(view.state().folderSizeStr, "0 B");
  EXPECT_EQ(view.state().totalCount, 0);
}

/// The same on real threads.
class FolderLoaderOnThreads : public FolderLoader {
 protected:
  static constexpr HeadlessOptions options() {
    return {.localeName = "C", .catalogueFolder = "/nowhere"};
  }
};

TEST_F(FolderLoaderOnThreads, AllLands) {
  HeadlessPlatform desktop(options());
  FolderPreviewView view(urlOf(folder_.path()), desktop.platform());
  view.onAppear();
  desktop.runUntilSettled();
  expectLoaded(view.state());
}

TEST_F(FolderLoaderOnThreads, ManyAppearancesOfManyViews) {
  for (int i = 0; i < 100; ++i) {
    std::filesystem::create_directories(folder_ / ("sub" + std::to_string(i) + "/inner"));
  }
  HeadlessPlatform desktop(options());
  std::vector<FolderPreviewView> views;
  for (int i = 0; i < 5; ++i) views.emplace_back(urlOf(folder_.path()), desktop.platform());
  for (int round = 0; round < 3; ++round) {
    for (FolderPreviewView& view : views) view.onAppear();
    desktop.mainQueue().runOne();
  }
  desktop.runUntilSettled();
  for (const FolderPreviewView& view : views) {
    EXPECT_EQ(view.state().totalCount, 101);
    EXPECT_EQ(view.state().folderSizeStr, "0 B");
  }
}

TEST_F(FolderLoaderOnThreads, TheViewGoesWhileItsSizeIsSummed) {
  for (int round = 0; round < 20; ++round) {
    HeadlessPlatform desktop(options());
    {
      FolderPreviewView view(urlOf(folder_.path()), desktop.platform());
      view.onAppear();
    }
    if (round % 2 == 0) desktop.runUntilSettled();
  }
}

}  // namespace
}  // namespace lumisk
