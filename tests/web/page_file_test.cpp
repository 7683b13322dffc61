#include "web/page_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/file_descriptor.h"
#include "support/files.h"

namespace lumisk {
namespace {

namespace fs = std::filesystem;

using test::readAll;
using test::TemporaryFolder;
using test::writeAll;

mode_t permissionsOf(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

std::vector<std::string> namesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

const std::vector<std::string> kOnlyThePage = {"preview.html"};

class PageFile : public testing::Test {
 protected:
  std::optional<FileURL> write(std::string_view html) {
    return writePageFile(caches_.string(), html);
  }

  TemporaryFolder temporary_;
  fs::path caches_ = temporary_ / "caches";
  fs::path folder_ = caches_ / "LumiskHTML";
  fs::path file_ = folder_ / "preview.html";
};

TEST_F(PageFile, IsWrittenWithMissingFoldersMade) {
  caches_ = temporary_ / "a" / "b" / "caches";
  const auto url = write("<p>hi</p>");
  ASSERT_TRUE(url);
  EXPECT_EQ(url->path(), (caches_ / "LumiskHTML" / "preview.html").string());
  EXPECT_EQ(readAll(url->path()), "<p>hi</p>");
}

TEST_F(PageFile, IsForItsOwnerOnlyWhateverTheUmask) {
  const mode_t before = ::umask(0);
  write("page");
  ::umask(before);
  EXPECT_EQ(permissionsOf(folder_), 0700U);
  EXPECT_EQ(permissionsOf(file_), 0600U);
}

TEST_F(PageFile, AFolderThatOthersCouldReadIsClosedToThem) {
  fs::create_directories(folder_);
  ::chmod(folder_.c_str(), 0755);
  writeAll(file_, "old");
  ::chmod(file_.c_str(), 0644);
  ASSERT_TRUE(write("page"));
  EXPECT_EQ(permissionsOf(folder_), 0700U);
  EXPECT_EQ(permissionsOf(file_), 0600U);
}

TEST_F(PageFile, ReplacesTheOneBeforeAndLeavesNothingElse) {
  for (const std::string page : {"a long first page", "second", "", "last"}) {
    ASSERT_TRUE(write(page));
    EXPECT_EQ(readAll(file_), page);
    EXPECT_EQ(namesIn(folder_), kOnlyThePage);
  }
}

TEST_F(PageFile, AReaderKeepsThePageItOpened) {
  ASSERT_TRUE(write("first"));
  std::ifstream reader(file_);
  ASSERT_TRUE(write("second"));
  std::string read;
  reader >> read;
  EXPECT_EQ(read, "first");
}

TEST_F(PageFile, ALinkInItsPlaceIsReplacedNotFollowed) {
  fs::create_directories(folder_);
  const fs::path precious = temporary_ / "precious";
  writeAll(precious, "precious");
  for (const fs::path& target : {precious, temporary_ / "nowhere", file_}) {
    fs::remove(file_);
    fs::create_symlink(target, file_);
    ASSERT_TRUE(write("page")) << target;
    EXPECT_FALSE(fs::is_symlink(file_)) << target;
    EXPECT_EQ(readAll(file_), "page");
  }
  EXPECT_EQ(readAll(precious), "precious");
  EXPECT_FALSE(fs::exists(temporary_ / "nowhere"));
}

TEST_F(PageFile, AHardLinkInItsPlaceDoesNotReachTheOtherName) {
  ASSERT_TRUE(write("old"));
  fs::create_hard_link(file_, temporary_ / "kept");
  ASSERT_TRUE(write("page"));
  EXPECT_EQ(readAll(temporary_ / "kept"), "old");
}

TEST_F(PageFile, APipeInItsPlaceIsReplacedWithoutWaiting) {
  fs::create_directories(folder_);
  ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
  ASSERT_TRUE(write("page"));
  EXPECT_EQ(readAll(file_), "page");
}

TEST_F(PageFile, ALinkInThePlaceOfItsFolderIsNotUsed) {
  const fs::path elsewhere = temporary_ / "elsewhere";
  fs::create_directories(elsewhere);
  fs::create_directories(caches_);
  fs::create_directory_symlink(elsewhere, folder_);
  EXPECT_FALSE(write("page"));
  EXPECT_TRUE(fs::is_empty(elsewhere));
}

TEST_F(PageFile, AFolderOfSomebodyElsesIsNotUsed) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can give a folder away";
  constexpr uid_t kNobody = 65534;
  fs::create_directories(folder_);
  ASSERT_EQ(::chown(folder_.c_str(), kNobody, kNobody), 0);
  EXPECT_FALSE(write("page"));
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(PageFile, ACachesDirectoryThatIsALinkIsThePersonsChoice) {
  fs::create_directories(temporary_ / "large disk");
  fs::create_directory_symlink(temporary_ / "large disk", caches_);
  ASSERT_TRUE(write("page"));
  EXPECT_EQ(readAll(temporary_ / "large disk" / "LumiskHTML" / "preview.html"), "page");
}

TEST_F(PageFile, WhatCannotBeReplacedIsLeftAloneAndNothingLeftBehind) {
  fs::create_directories(file_ / "a folder in the way");
  EXPECT_FALSE(write("page"));
  EXPECT_TRUE(fs::is_directory(file_ / "a folder in the way"));
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, AFileInTheWayOfAFolderMeansNoPageFile) {
  writeAll(caches_, "in the way");
  EXPECT_FALSE(write("page"));
  EXPECT_EQ(readAll(caches_), "in the way");
}

TEST_F(PageFile, CannotBeWrittenToAReadOnlyPlace) {
  // Permissions do not stop the superuser, but nobody can make files in /proc.
  EXPECT_FALSE(writePageFile("/proc/self", "page"));
  if (::geteuid() == 0) return;
  fs::create_directories(caches_);
  ::chmod(caches_.c_str(), 0500);
  EXPECT_FALSE(write("page"));
  ::chmod(caches_.c_str(), 0700);
}

TEST_F(PageFile, WhenThereIsNoRoomTheOldPageStaysAndNothingIsLeftBehind) {
  ASSERT_TRUE(write("old"));
  // A limit on the size of files stands for a full disk: writing stops half-way.
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  const auto handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &small);
  const auto url = write(std::string(5000, 'x'));
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handlerBefore);
  EXPECT_FALSE(url);
  EXPECT_EQ(readAll(file_), "old");
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, WhatAKilledWriterLeftBehindIsRemovedByTheNext) {
  fs::create_directories(folder_);
  for (const char* name : {".preview-1.tmp", ".preview-ffffffffffffffff.tmp", ".preview-.tmp"}) {
    writeAll(folder_ / name, "half a pa");
  }
  fs::create_symlink(temporary_ / "nowhere", folder_ / ".preview-2.tmp");
  ASSERT_EQ(::mkfifo((folder_ / ".preview-3.tmp").c_str(), 0600), 0);
  writeAll(folder_ / "a person's own", "");
  writeAll(folder_ / ".preview-4.html", "");
  ASSERT_TRUE(write("page"));
  EXPECT_EQ(namesIn(folder_),
            (std::vector<std::string>{".preview-4.html", "a person's own", "preview.html"}));
}

TEST_F(PageFile, WhatALivingWriterIsWritingIsLeftToIt) {
  fs::create_directories(folder_);
  const fs::path name = folder_ / ".preview-5.tmp";
  const FileDescriptor writer(::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
  ASSERT_EQ(::flock(writer.get(), LOCK_EX), 0);
  ASSERT_TRUE(write("page"));
  EXPECT_TRUE(fs::exists(name));
}

TEST_F(PageFile, APageThatIsWrittenBesideItIsNotSeenBeforeItIsPutInPlace) {
  ASSERT_TRUE(write("old"));
  auto page = writePageBeside(caches_.string(), "new");
  ASSERT_TRUE(page);
  EXPECT_EQ(readAll(file_), "old");
  EXPECT_EQ(namesIn(folder_).size(), 2U);
  const auto url = page->putInPlace();
  ASSERT_TRUE(url);
  EXPECT_EQ(url->path(), file_.string());
  EXPECT_EQ(readAll(file_), "new");
  page.reset();
  EXPECT_EQ(readAll(file_), "new") << "it is the page file now, and stays";
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, APageThatIsNotWantedGoesWithItsLastHolder) {
  ASSERT_TRUE(write("old"));
  auto page = writePageBeside(caches_.string(), "new");
  ASSERT_TRUE(page);
  auto holder = std::make_unique<WrittenPage>(*std::move(page));
  page.reset();
  EXPECT_EQ(namesIn(folder_).size(), 2U);
  holder.reset();
  EXPECT_EQ(readAll(file_), "old");
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, APageBesideItOutlastsOtherWriters) {
  auto page = writePageBeside(caches_.string(), "slow");
  ASSERT_TRUE(page);
  ASSERT_TRUE(write("quick"));
  ASSERT_TRUE(page->putInPlace());
  EXPECT_EQ(readAll(file_), "slow");
}

TEST_F(PageFile, APageThatCannotBePutInPlaceGoes) {
  fs::create_directories(file_ / "a folder in the way");
  {
    auto page = writePageBeside(caches_.string(), "new");
    ASSERT_TRUE(page);
    EXPECT_FALSE(page->putInPlace());
  }
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, KilledWritersLeaveNoMoreThanOneFile) {
  for (int i = 0; i < 40; ++i) {
    const pid_t child = ::fork();
    if (child == 0) {
      const std::string page(std::size_t{4} << 20, 'x');
      while (true) writePageFile(caches_.string(), page);
    }
    ::usleep(static_cast<useconds_t>(1000 + i * 251));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    if (fs::exists(file_)) {
      EXPECT_EQ(fs::file_size(file_), std::size_t{4} << 20);
    }
    if (fs::exists(folder_)) {
      EXPECT_LE(namesIn(folder_).size(), 2U);
    }
  }
  ASSERT_TRUE(write("page"));
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, TwoWritersAtOnceLeaveOneWholePageForEveryReader) {
  constexpr int kRounds = 200;
  const std::string pages[] = {std::string(std::size_t{300} << 10, 'a'),
                               std::string(std::size_t{200} << 10, 'b')};
  ASSERT_TRUE(write(pages[0]));
  std::atomic<int> writing{2};
  std::atomic<int> failures{0};
  std::vector<std::thread> writers;
  for (const std::string& page : pages) {
    writers.emplace_back([&] {
      for (int i = 0; i < kRounds; ++i) failures += write(page) ? 0 : 1;
      --writing;
    });
  }
  int reads = 0;
  for (; writing > 0 || reads == 0; ++reads) {
    const std::string page = readAll(file_);
    ASSERT_TRUE(page == pages[0] || page == pages[1]) << page.size();
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(namesIn(folder_), kOnlyThePage);
}

TEST_F(PageFile, ItsURLIsThatOfTheFileAlsoWhenThePathIsNotPlain) {
  fs::create_directories(temporary_ / "real" / "inner");
  fs::create_directory_symlink(temporary_ / "real" / "inner", temporary_ / "link");
  for (const std::string tail : {"caches//x/", "./y z", "link/../w", "b\xFF", "a%20#?"}) {
    const auto url = writePageFile((temporary_ / tail).string(), tail);
    ASSERT_TRUE(url) << tail;
    EXPECT_EQ(readAll(url->path()), tail);
  }
}

}  // namespace
}  // namespace lumisk
