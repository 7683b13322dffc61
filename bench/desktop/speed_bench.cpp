#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "bench/desktop/benches.h"
#include "bench/desktop/previewer.h"
#include "bench/desktop/watch.h"

namespace lumisk::bench {
namespace {

constexpr int kRounds = 10;
constexpr std::size_t kHundredKilobytes = std::size_t{100} * 1024;
constexpr std::size_t kUsualMarkdown = std::size_t{8} * 1000;

/// A person closes a preview and opens the next one a moment later.
constexpr double kBetween = 0.7;  // seconds

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

struct Samples {
  std::vector<double> firstPixels;
  std::vector<double> complete;

  void add(const std::optional<Seen>& seen) {
    if (!seen) return;
    firstPixels.push_back(seen->firstPixels);
    complete.push_back(seen->complete);
  }
};

void printRow(const char* name, const Samples& samples, const char* goal) {
  if (samples.complete.empty()) return void(std::printf("| %s | nothing was seen | | | |\n", name));
  const auto [least, most] = std::minmax_element(samples.complete.begin(), samples.complete.end());
  std::printf("| %s | %.0f ms | %.0f ms | %.0f to %.0f ms | %s |\n", name,
              median(samples.firstPixels) * 1e3, median(samples.complete) * 1e3, *least * 1e3,
              *most * 1e3, goal);
}

struct Kind {
  const char* name;
  std::string path;
  const char* goal;
};

std::vector<Kind> kinds(const Documents& documents) {
  return {
      {"source, 100 KB", documents.source(kHundredKilobytes), "200 ms"},
      {"JSON, 100 KB", documents.json(kHundredKilobytes), "200 ms"},
      {"table, 100 KB", documents.table(kHundredKilobytes), "200 ms"},
      {"Markdown, 8 KB", documents.markdown(kUsualMarkdown), "200 ms"},
      {"Markdown with a diagram, 8 KB", documents.markdownWithDiagram(kUsualMarkdown), "450 ms"},
      {"Markdown, 100 KB", documents.markdown(kHundredKilobytes), ""},
      {"folder, 1000 entries", documents.folder(1000), ""},
  };
}

void showOnce(const VisibleScreen& screen, Previewer& previewer, const std::string& path,
              Samples* samples) {
  const auto seen = watch(screen, [&] { previewer.show(path); }, {.longest = 10});
  previewer.close();
  wait(kBetween);
  if (samples != nullptr) samples->add(seen);
}

/// Another document comes between, since the same one again would show no change.
Samples showAndClose(const VisibleScreen& screen, Previewer& previewer, const std::string& path,
                     const std::string& other) {
  Samples samples;
  for (int round = 0; round < kRounds; ++round) {
    showOnce(screen, previewer, other, nullptr);
    showOnce(screen, previewer, path, &samples);
  }
  return samples;
}

}  // namespace

void measureWarm(const VisibleScreen& screen, const Documents& documents) {
  std::puts(
      "\n| warm: closed, then shown | first pixels (goal 150 ms) | complete | range | goal |");
  std::puts("| --- | --- | --- | --- | --- |");
  Previewer previewer;
  previewer.start();
  const std::string other = documents.file("other.md", "# Another document\n\nOf a few words.\n");
  for (const Kind& kind : kinds(documents))
    printRow(kind.name, showAndClose(screen, previewer, kind.path, other), kind.goal);
}

void measureCold(const VisibleScreen& screen, const Documents& documents) {
  std::puts("\n| cold: the program is started | first pixels | complete | range | goal |");
  std::puts("| --- | --- | --- | --- | --- |");
  const std::string path = documents.markdown(kUsualMarkdown);
  Samples samples;
  Previewer previewer;
  for (int round = 0; round <= kRounds; ++round) {
    const auto seen = watch(screen, [&] { previewer.startWith(path); });
    previewer.stop();
    wait(kBetween);
    if (round > 0) samples.add(seen);  // the first fills the file cache
  }
  printRow("Markdown, 8 KB", samples, "2000 ms");
}

}  // namespace lumisk::bench
