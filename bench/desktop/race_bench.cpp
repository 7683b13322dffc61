// race_bench [warm|cold|memory]
//
// Lumisk beside the previewer that the desktop ships, seen from outside in the same way: from the
// call on the bus to the first pixel on the screen that is another, and to the last one of the
// document, below the window's title and buttons. Run it as
//
//     tests/desktop/with-display tests/desktop/with-integration BUILD/bin/lumisk
//     BUILD/bin/race_bench
//
// The two take turns on every file. watch.h says how the screen is looked at.

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/desktop/documents.h"
#include "bench/desktop/previewer.h"
#include "bench/desktop/process_tree.h"
#include "bench/desktop/raced_previewer.h"
#include "bench/desktop/screen.h"
#include "bench/desktop/watch.h"

namespace lumisk::bench {
namespace {

constexpr const char* kPeer = "/usr/libexec/org.gnome.NautilusPreviewer";
constexpr int kWarmRounds = 5;
constexpr int kColdRounds = 3;
constexpr double kQuiet = 1.2;    // seconds; what has not changed for so long is complete
constexpr double kLongest = 10;   // seconds
constexpr double kBetween = 0.7;  // seconds; a person closes one and opens the next
constexpr double kSettled = 3;    // seconds
constexpr double kMillisecond = 1e-3;

std::optional<Seen> show(const VisibleScreen& screen, const RacedPreviewer& previewer,
                         const std::string& path) {
  return watch(screen, [&] { previewer.show(path); }, {.quiet = kQuiet, .longest = kLongest});
}

struct Samples {
  std::vector<double> firstPixels;
  std::vector<double> complete;
};

struct File {
  const char* name;
  std::string path;
};

using Racers = std::array<const RacedPreviewer*, 2>;
/// For each file, for each racer.
using Results = std::vector<std::array<Samples, 2>>;

enum class Start { Warm, Cold };

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// Median and range in milliseconds.
std::string inWords(const std::vector<double>& values) {
  if (values.empty()) return "not settled";
  const auto [least, most] = std::minmax_element(values.begin(), values.end());
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.0f (%.0f to %.0f)", median(values) / kMillisecond,
                *least / kMillisecond, *most / kMillisecond);
  return text.data();
}

void addSample(const VisibleScreen& screen, const RacedPreviewer& racer, const std::string& path,
               Start start, Samples& samples) {
  const auto shown = show(screen, racer, path);
  racer.close();
  wait(kBetween);
  if (start == Start::Cold) racer.stop();
  if (!shown) return;
  samples.firstPixels.push_back(shown->firstPixels);
  samples.complete.push_back(shown->complete);
}

/// The first round fills caches and is not counted. Another file comes between two showings of one.
void race(const VisibleScreen& screen, const Racers& racers, const std::vector<File>& files,
          Start start) {
  Results results(files.size());
  const int rounds = start == Start::Warm ? kWarmRounds : kColdRounds;
  for (int round = 0; round <= rounds; ++round) {
    if (round == 1) results.assign(files.size(), {});
    for (std::size_t file = 0; file < files.size(); ++file)
      for (std::size_t i = 0; i < racers.size(); ++i)
        addSample(screen, *racers[i], files[file].path, start, results[file][i]);
  }
  for (std::size_t file = 0; file < files.size(); ++file) {
    std::printf("| %s, %s |", files[file].name, start == Start::Warm ? "warm" : "cold");
    for (const Samples& of : results[file])
      std::printf(" %s | %s |", inWords(of.firstPixels).c_str(), inWords(of.complete).c_str());
    std::puts("");
  }
}

void printMemory(const RacedPreviewer& previewer, const char* moment) {
  const auto tree = processTree(previewer.process());
  std::printf("| %s, %s | %.0f MB |", previewer.label().c_str(), moment,
              static_cast<double>(memoryOf(tree)) / 1024);
  for (const TreeProcess& process : tree)
    std::printf(" %s %.0f", process.name.c_str(), static_cast<double>(process.kilobytes) / 1024);
  std::puts(" |");
}

void measureMemory(const VisibleScreen& screen, const RacedPreviewer& previewer,
                   const std::string& path) {
  previewer.stop();
  previewer.start();
  wait(kSettled);
  printMemory(previewer, "3 s after the start");
  show(screen, previewer, path);
  previewer.close();
  wait(kSettled);
  printMemory(previewer, "3 s after a Markdown preview");
  previewer.stop();
}

void measureMemories(const VisibleScreen& screen, const Racers& racers, const std::string& path) {
  std::puts("\n| memory of the process tree (PSS) | sum | by process, MB |");
  std::puts("| --- | --- | --- |");
  for (const RacedPreviewer* racer : racers) measureMemory(screen, *racer, path);
}

void printHeader() {
  std::puts(
      "| ms, median (range) | our first pixels | our complete | peer's first pixels | peer's "
      "complete |");
  std::puts("| --- | --- | --- | --- | --- |");
}

int run(std::string_view part) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const VisibleScreen screen;
  const Documents documents;
  const RacedPreviewer ours("Lumisk", LUMISK_PREVIEWER " --gapplication-service");
  const RacedPreviewer theirs("peer", kPeer);
  const Racers racers = {&ours, &theirs};
  std::string text;
  for (int i = 0; i < 200; ++i) text += "Line " + std::to_string(i) + " of some plain notes.\n";
  const std::vector<File> files = {{"text, 6 KB", documents.file("notes.txt", text)},
                                   {"code, 100 KB", documents.source(std::size_t{100} * 1024)},
                                   {"Markdown, 6 KB", documents.markdown(6000)}};
  const auto isWanted = [&](std::string_view name) { return part == "all" || part == name; };
  if (part != "memory") printHeader();
  if (isWanted("warm")) race(screen, racers, files, Start::Warm);
  if (isWanted("cold")) race(screen, racers, files, Start::Cold);
  if (isWanted("memory")) measureMemories(screen, racers, files.back().path);
  return 0;
}

}  // namespace
}  // namespace lumisk::bench

int main(int argc, char** argv) { return lumisk::bench::run(argc > 1 ? argv[1] : "all"); }
