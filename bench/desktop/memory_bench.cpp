#include <cstdio>
#include <string>
#include <vector>

#include "bench/desktop/benches.h"
#include "bench/desktop/previewer.h"
#include "bench/desktop/process_tree.h"
#include "bench/desktop/watch.h"

namespace lumisk::bench {
namespace {

constexpr int kPreviews = 500;
constexpr int kFirstPart = 50;
constexpr double kSettled = 3;  // seconds

void printTree(const char* moment, const Previewer& previewer) {
  const auto tree = processTree(previewer.process());
  std::printf("| %s | %.0f MB |", moment, static_cast<double>(memoryOf(tree)) / 1024);
  for (const TreeProcess& process : tree)
    std::printf(" %s %.0f", process.name.c_str(), static_cast<double>(process.kilobytes) / 1024);
  std::puts(" |");
}

struct Held {
  std::size_t processes;
  int descriptors;
  long kilobytes;
};

Held heldBy(const Previewer& previewer) {
  wait(kSettled);
  const auto tree = processTree(previewer.process());
  return {tree.size(), openDescriptors(previewer.process()), memoryOf(tree)};
}

}  // namespace

void measureMemory(const VisibleScreen& screen, const Documents& documents) {
  std::puts("\n| memory of the process tree (PSS) | sum | by process, MB |");
  std::puts("| --- | --- | --- |");
  Previewer previewer;
  previewer.start();
  wait(0.2);
  printTree("just started, no web view yet", previewer);
  wait(kSettled);
  printTree("the same with a web view kept ready", previewer);
  const std::string markdown = documents.markdown(8192);
  watch(screen, [&] { previewer.show(markdown); });
  wait(kSettled);
  printTree("first Markdown preview, shown", previewer);
  previewer.close();
  wait(kSettled);
  printTree("the same, closed", previewer);
  const std::string diagram = documents.markdownWithDiagram(8192);
  watch(screen, [&] { previewer.show(diagram); });
  wait(kSettled);
  printTree("Markdown with a diagram, shown", previewer);
}

void measureEndurance(const VisibleScreen& screen, const Documents& documents) {
  const std::vector<std::string> paths = {
      documents.markdownWithDiagram(2000),
      documents.markdown(8192),
      documents.json(20'000),
      documents.table(20'000),
      documents.source(20'000),
      documents.folder(200),
      documents.file("not-text.bin", std::string("\xff\xfe\x00", 3))};
  std::puts("\n| previews of mixed kinds | processes | descriptors | memory |");
  std::puts("| --- | --- | --- | --- |");
  Previewer previewer;
  previewer.start();
  for (int i = 0; i < kPreviews; ++i) {
    watch(screen, [&] { previewer.show(paths[static_cast<std::size_t>(i) % paths.size()]); },
          {.quiet = 0.05, .longest = 2});
    previewer.close();
    wait(0.05);
    if (i + 1 != kFirstPart && i + 1 != kPreviews) continue;
    const Held held = heldBy(previewer);
    std::printf("| after %d | %zu | %d | %.0f MB |\n", i + 1, held.processes, held.descriptors,
                static_cast<double>(held.kilobytes) / 1024);
  }
}

}  // namespace lumisk::bench
