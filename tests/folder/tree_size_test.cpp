#include "folder/tree_size.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/sysmacros.h>
#include <sys/un.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <thread>

#include "deep_tree.h"
#include "folder_fixtures.h"
#include "platform/file_descriptor.h"

namespace lumisk {
namespace {

using test::allocatedSizeOf;
using test::TemporaryFolder;
using test::writeAll;

std::int64_t sizeOf(const std::filesystem::path& folder) {
  const std::int64_t alone = allocatedSizeBelow(folder.native(), 1);
  EXPECT_EQ(allocatedSizeBelow(folder.native(), 4), alone);
  return alone;
}

TEST(FolderSize, EmptyMissingAndNoFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(sizeOf(folder.path()), 0);
  EXPECT_EQ(sizeOf(folder / "missing"), 0);
  writeAll(folder / "file", "x");
  EXPECT_EQ(sizeOf(folder / "file"), 0);
}

TEST(FolderSize, AFileCountsItsBlocks) {
  const TemporaryFolder folder;
  writeAll(folder / "file", "x");
  EXPECT_EQ(sizeOf(folder.path()), allocatedSizeOf(folder / "file"));
}

TEST(FolderSize, FoldersThemselvesCountNothing) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / "a/b/c");
  std::filesystem::create_directories(folder / "d");
  EXPECT_EQ(sizeOf(folder.path()), 0);
}

TEST(FolderSize, HiddenAndNestedFilesCount) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / ".hidden/package.app");
  writeAll(folder / ".DS_Store", std::string(5000, 'x'));
  writeAll(folder / ".hidden/package.app/inner", std::string(9000, 'x'));
  EXPECT_EQ(sizeOf(folder.path()), allocatedSizeOf(folder / ".DS_Store") +
                                       allocatedSizeOf(folder / ".hidden/package.app/inner"));
}

TEST(FolderSize, LinksAreNotFollowed) {
  const TemporaryFolder outside;
  writeAll(outside / "big", std::string(100'000, 'x'));
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  std::filesystem::create_directory_symlink(outside.path(), folder / "to folder");
  std::filesystem::create_symlink(outside / "big", folder / "to file");
  std::filesystem::create_directory_symlink("..", folder / "sub/loop");
  std::filesystem::create_symlink("self", folder / "self");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  EXPECT_EQ(sizeOf(folder.path()),
            allocatedSizeOf(folder / "to folder") + allocatedSizeOf(folder / "to file") +
                allocatedSizeOf(folder / "sub/loop") + allocatedSizeOf(folder / "self") +
                allocatedSizeOf(folder / "dangling"));
}

TEST(FolderSize, TheFolderItselfMayBeALink) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "real");
  writeAll(folder / "real/file", "x");
  std::filesystem::create_directory_symlink("real", folder / "link");
  EXPECT_EQ(sizeOf(folder / "link"), allocatedSizeOf(folder / "real/file"));
}

TEST(FolderSize, AFileWithTwoNamesCountsForEach) {
  const TemporaryFolder folder;
  writeAll(folder / "one", std::string(5000, 'x'));
  std::filesystem::create_hard_link(folder / "one", folder / "two");
  EXPECT_EQ(sizeOf(folder.path()), 2 * allocatedSizeOf(folder / "one"));
}

TEST(FolderSize, SparseFilesCountWhatIsAllocated) {
  const TemporaryFolder folder;
  writeAll(folder / "sparse", "");
  std::filesystem::resize_file(folder / "sparse", 5'000'000'000);
  EXPECT_EQ(sizeOf(folder.path()), allocatedSizeOf(folder / "sparse"));
  EXPECT_LT(sizeOf(folder.path()), 1'000'000);
}

TEST(FolderSize, PipesSocketsAndOddNamesDoNoHarm) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  const FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, (folder / "socket").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(bind(listener.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  if (mknod((folder / "device").c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
    std::puts("without a device node, which only root may make");
  }
  std::filesystem::create_directory(folder / "two\nlines");
  writeAll(folder / "two\nlines/\xFF\xFE", "x");
  EXPECT_EQ(sizeOf(folder.path()), allocatedSizeOf(folder / "two\nlines/\xFF\xFE"));
}

TEST(FolderSize, UnreadablePartsCountNothing) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  std::filesystem::create_directories(folder / "closed/below");
  std::filesystem::create_directory(folder / "names only");
  writeAll(folder / "closed/below/file", "x");
  writeAll(folder / "names only/file", "x");
  writeAll(folder / "seen", "x");
  std::filesystem::permissions(folder / "closed", std::filesystem::perms::none);
  std::filesystem::permissions(folder / "names only", test::kNamesOnly);
  {
    const test::WithoutPrivileges nobody;
    EXPECT_EQ(sizeOf(folder.path()), allocatedSizeOf(folder / "seen"));
  }
  std::filesystem::permissions(folder / "closed", std::filesystem::perms::all);
  std::filesystem::permissions(folder / "names only", std::filesystem::perms::all);
}

/// The sum by the library's own walk.
std::int64_t sizeByLibrary(const std::filesystem::path& folder) {
  std::int64_t size = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_symlink() || !entry.is_directory()) size += allocatedSizeOf(entry.path());
  }
  return size;
}

/// Folders in random places below `folder`, each with a few files.
void growRandomTree(const std::filesystem::path& folder, unsigned seed, int folders) {
  std::mt19937 random(seed);
  std::vector<std::filesystem::path> all = {folder};
  for (int i = 0; i < folders; ++i) {
    const auto& parent = all[random() % all.size()];
    all.push_back(parent / std::to_string(i));
    std::filesystem::create_directory(all.back());
    for (auto files = random() % 4; files > 0; --files) {
      writeAll(all.back() / ("file" + std::to_string(files)), std::string(random() % 20'000, 'x'));
    }
  }
}

TEST(FolderSize, IsTheSameWithAnyNumberOfThreads) {
  for (unsigned seed = 1; seed <= 3; ++seed) {
    const TemporaryFolder folder;
    growRandomTree(folder.path(), seed, 300);
    const std::int64_t expected = sizeByLibrary(folder.path());
    for (const std::size_t threads : {0U, 1U, 2U, 3U, 8U, 32U}) {
      EXPECT_EQ(allocatedSizeBelow(folder.path().native(), threads), expected) << threads;
    }
  }
}

TEST(FolderSize, ManyWalksAtOnce) {
  const TemporaryFolder folder;
  growRandomTree(folder.path(), 7, 200);
  const std::int64_t expected = sizeByLibrary(folder.path());
  std::vector<std::thread> callers;
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      for (int j = 0; j < 10; ++j) {
        EXPECT_EQ(allocatedSizeBelow(folder.path().native(), 3), expected);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
}

TEST(FolderSize, BeyondFourGigabytes) {
  const TemporaryFolder folder;
  // Each name of a file counts, so a small file with many names makes a large folder.
  constexpr std::int64_t kFileSize = std::int64_t{16} << 20;
  constexpr int kNames = 300;
  writeAll(folder / "0", std::string(kFileSize, 'x'));
  for (int i = 1; i < kNames; ++i) {
    std::filesystem::create_hard_link(folder / "0", folder / std::to_string(i));
  }
  const std::int64_t size = allocatedSizeOf(folder / "0");
  ASSERT_GE(size, kFileSize);
  for (const std::size_t threads : {1U, 4U}) {
    EXPECT_EQ(allocatedSizeBelow(folder.path().native(), threads), kNames * size);
  }
  EXPECT_GT(kNames * size, std::int64_t{1} << 32);
}

TEST(FolderSize, SurvivesATreeThatIsRemovedMeanwhile) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    const TemporaryFolder folder;
    const auto root = folder / "root";
    std::filesystem::create_directory(root);
    growRandomTree(root, seed, 200);
    const std::int64_t whole = sizeByLibrary(root);
    std::thread remover([&] { std::filesystem::remove_all(root); });
    const std::int64_t size = allocatedSizeBelow(root.native(), 3);
    remover.join();
    EXPECT_GE(size, 0);
    EXPECT_LE(size, whole);
    EXPECT_EQ(allocatedSizeBelow(root.native(), 3), 0);
  }
}

/// Allows few open files while it lives.
class FewDescriptors {
 public:
  explicit FewDescriptors(rlim_t limit) {
    getrlimit(RLIMIT_NOFILE, &former_);
    rlimit lowered = former_;
    lowered.rlim_cur = limit;
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &lowered), 0);
  }
  FewDescriptors(const FewDescriptors&) = delete;
  FewDescriptors& operator=(const FewDescriptors&) = delete;
  ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &former_); }

 private:
  rlimit former_{};
};

TEST(FolderSize, TenThousandLevelsWithFewDescriptors) {
  const TemporaryFolder folder;
  const test::DeepTree tree(folder.path(), 10'000, 10);
  const FewDescriptors limit(100);
  EXPECT_EQ(allocatedSizeBelow(folder.path().native(), 1), tree.allocatedSize());
  EXPECT_EQ(allocatedSizeBelow(folder.path().native(), 2), tree.allocatedSize());
}

}  // namespace
}  // namespace lumisk
