// How long a folder's preview takes beside the system's own programs on the same folders: the sum
// of everything below beside `du -s`, the listing beside `ls -l` in the same locale. Caches are
// warm, the rounds interleave, medians are printed, with their ratios.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "bare_walk.h"
#include "folder/folder_preview_view.h"
#include "folder/tree_size.h"
#include "folder_bench_files.h"
#include "heap_count.h"
#include "platform/headless/headless_platform.h"

namespace lumisk::bench {
namespace {

constexpr int kRounds = 9;
constexpr const char* kLocale = "en_US.UTF-8";

double millisecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double, std::milli> elapsed =
      std::chrono::steady_clock::now() - start;
  return elapsed.count();
}

/// Runs a program with its output thrown away.
void run(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = 1;
  const int result =
      posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  if (result == 0) waitpid(child, &status, 0);
  posix_spawn_file_actions_destroy(&actions);
  if (result == 0 && status == 0) return;
  std::fprintf(stderr, "%s failed\n", words[0].c_str());
  std::exit(1);
}

/// One thing that is timed.
struct Contender {
  const char* name;
  std::function<void()> work;
  std::vector<double> milliseconds = {};

  double median() const {
    std::vector<double> sorted = milliseconds;
    std::ranges::sort(sorted);
    return sorted[sorted.size() / 2];
  }
};

/// The first is the one that the others are compared with.
void race(const char* title, std::vector<Contender> contenders) {
  for (int round = -1; round < kRounds; ++round) {  // the first round only warms the caches
    for (Contender& contender : contenders) {
      const double elapsed = millisecondsOf(contender.work);
      if (round >= 0) contender.milliseconds.push_back(elapsed);
    }
  }
  std::printf("%s (medians of %d rounds)\n", title, kRounds);
  for (const Contender& contender : contenders) {
    std::printf("  %-32s %8.1f ms   %.2fx\n", contender.name, contender.median(),
                contender.median() / contenders[0].median());
  }
}

/// Makes `kLocale` if the machine has none, for this program and those that it runs.
void provideLocale(const GeneratedFolders& folders) {
  const locale_t found = newlocale(LC_ALL_MASK, kLocale, static_cast<locale_t>(nullptr));
  if (found != static_cast<locale_t>(nullptr)) {
    freelocale(found);
  } else {
    run({"localedef", "--no-archive", "-i", "en_US", "-f", "UTF-8", folders.locales() / kLocale});
    setenv("LOCPATH", folders.locales().c_str(), 1);
  }
  setenv("LC_ALL", kLocale, 1);
}

/// Work that is never done: the listing is timed without the sum.
class NoBackgroundQueue final : public BackgroundQueue {
 public:
  void async(Task /*task*/) override {}
};

class Listing {
 public:
  explicit Listing(const std::filesystem::path& folder)
      : url_(FileURL::fromPath(folder.native() + "/")) {}

  /// From the view's appearance until its state has landed.
  FolderPreviewView load() {
    FolderPreviewView view(url_, platform_);
    view.onAppear();
    desktop_.mainQueue().runUntilIdle();
    if (view.state().totalCount != GeneratedFolders::kListedEntries) std::abort();
    return view;
  }

 private:
  FileURL url_;
  HeadlessPlatform desktop_{{.localeName = kLocale, .catalogueFolder = {}}};
  NoBackgroundQueue noBackground_;
  Platform platform_{desktop_.platform().mainQueue,
                     noBackground_,
                     desktop_.platform().appearance,
                     desktop_.platform().strings,
                     desktop_.platform().makeDateFormatter,
                     desktop_.platform().collation,
                     desktop_.platform().icons,
                     desktop_.platform().hiddenNames,
                     desktop_.platform().caches,
                     desktop_.platform().standardOutput};
};

void raceSizes(const std::filesystem::path& tree) {
  const auto sum = [&](std::size_t threads) {
    return [&tree, threads] {
      if (allocatedSizeBelow(tree, threads) == 0) std::abort();
    };
  };
  if (bareWalk(tree) != allocatedSizeBelow(tree, 1)) std::abort();
  race("Size of 200,000 files in 2,000 folders",
       {{"du -s",
         [&] {
           run({"du", "-s", tree});
         }},
        {"the system calls alone", [&] { bareWalk(tree); }},
        {"Lumisk, 1 thread", sum(1)},
        {"Lumisk, 2 threads", sum(2)},
        {"Lumisk, 8 threads", sum(8)}});
}

void raceListing(const std::filesystem::path& folder) {
  Listing listing(folder);
  race("Listing of 100,000 entries", {{"ls -l",
                                       [&] {
                                         run({"ls", "-l", folder});
                                       }},
                                      {"Lumisk, published", [&] { listing.load(); }}});
}

void printMemory(const GeneratedFolders& folders) {
  Listing listing(folders.listed());
  startHeapCount();
  {
    const FolderPreviewView view = listing.load();
    const HeapCount count = stopHeapCount();
    std::printf("Memory of a listed entry: %zu bytes kept, %zu at the peak\n",
                count.held / GeneratedFolders::kListedEntries,
                count.peak / GeneratedFolders::kListedEntries);
  }
  startHeapCount();
  allocatedSizeBelow(folders.tree(), 1);
  std::printf("Memory of a walked folder: %zu bytes at the peak, nothing kept\n",
              stopHeapCount().peak / GeneratedFolders::kTreeFolders);
}

void runAll() {
  std::printf("Making the folders…\n");
  const GeneratedFolders folders;
  provideLocale(folders);
  raceSizes(folders.tree());
  raceListing(folders.listed());
  printMemory(folders);
}

}  // namespace
}  // namespace lumisk::bench

int main() { lumisk::bench::runAll(); }
