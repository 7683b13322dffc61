// Many previews one after another: what a closed panel held is freed.
//
// LUMISK_PREVIEWS sets how many (120 when it is not set); docs/performance.md was measured with
// 500.

#include <dirent.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

#include "desktop/panel.h"
#include "process_tree.h"
#include "screen.h"
#include "support/files.h"

namespace lumisk::test {
namespace {

constexpr int kUsualPreviews = 120;
/// By then everything that is kept for later has been made.
constexpr int kFirstPart = 50;

int entriesIn(const char* folder) {
  int count = 0;
  DIR* const open = opendir(folder);
  if (open == nullptr) return -1;
  while (readdir(open) != nullptr) ++count;
  closedir(open);
  return count;
}

/// Proportional set size of the whole tree in kB: shared pages are counted once.
long memoryOfTree() {
  long total = 0;
  for (const std::string& process : processTree()) {
    std::ifstream rollup("/proc/" + process + "/smaps_rollup");
    for (std::string line; std::getline(rollup, line);)
      if (line.starts_with("Pss:")) total += std::stol(line.substr(4));
  }
  return total;
}

/// The least that is seen within a few seconds, or as soon as it is no more than `enough`: the
/// engine's memory rises and falls by half as it collects its garbage when it has time to, and only
/// what it cannot collect stays.
long settledMemoryOfTree(long enough) {
  long least = memoryOfTree();
  for (int i = 0; i < 20 && least > enough; ++i) {
    runFor(250);
    least = std::min(least, memoryOfTree());
  }
  return least;
}

int previewCount() {
  const char* const text = std::getenv("LUMISK_PREVIEWS");
  const int count = text == nullptr ? 0 : std::atoi(text);
  return count > kFirstPart ? count : kUsualPreviews;
}

TEST(Endurance, ManyPreviewsLeaveNothingBehind) {
  const TemporaryFolder folder;
  writeAll(folder / "a.md", "# A\n\n$x$\n\n```mermaid\ngraph TD\n  A-->B\n```\n");
  writeAll(folder / "b.md", "# B\n\n```cpp\nint x;\n```\n");
  writeAll(folder / "c.json", "{\"a\":[1,2,3]}");
  writeAll(folder / "d.csv", "a,b\n1,2\n");
  writeAll(folder / "e.cpp", "int main() {}\n");
  writeAll(folder / "f.bin", std::string("\xff\xfe\x00", 3));
  std::filesystem::create_directory(folder / "g");
  const char* const names[] = {"a.md", "b.md", "c.json", "d.csv", "e.cpp", "f.bin", "g"};

  desktop::Panel panel(Program::shared().platform.platform(), Program::shared().liveViews);
  int finished = 0;
  panel.onPageFinished = [&] { ++finished; };
  const int count = previewCount();
  int descriptors = 0;
  std::size_t processes = 0;
  guint windows = 0;
  long memory = 0;
  for (int i = 0; i < count; ++i) {
    finished = 0;
    panel.show(FileURL::fromPath((folder / names[i % std::size(names)]).string()));
    if (panel.webViews().latestView() != nullptr) {
      ASSERT_TRUE(runUntil([&] { return finished > 0; })) << i;
    }
    runFor(30);
    panel.close();
    if (i < kFirstPart) memory = std::max(memory, memoryOfTree());
    if (i + 1 != kFirstPart) continue;
    runFor(1000);
    descriptors = entriesIn("/proc/self/fd");
    processes = processTree().size();
    windows = g_list_model_get_n_items(gtk_window_get_toplevels());
  }
  runFor(1000);
  // A few are opened by chance, at the first change of this or that; a leak opens one each time.
  EXPECT_LE(entriesIn("/proc/self/fd"), descriptors + 8);
  EXPECT_EQ(processTree().size(), processes);
  EXPECT_EQ(g_list_model_get_n_items(gtk_window_get_toplevels()), windows);
  const long most = memory + memory / 5;
  const long last = settledMemoryOfTree(most);
  EXPECT_LE(last, most) << "kB, at most " << memory << " in the first " << kFirstPart;
  std::printf("%d previews: at most %ld kB in the first %d, %ld kB at the end\n", count, memory,
              kFirstPart, last);
}

}  // namespace
}  // namespace lumisk::test
