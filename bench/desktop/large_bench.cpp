#include <X11/keysym.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "bench/desktop/benches.h"
#include "bench/desktop/previewer.h"
#include "bench/desktop/process_tree.h"
#include "bench/desktop/watch.h"

namespace lumisk::bench {
namespace {

constexpr std::size_t kFiftyMegabytes = std::size_t{50} * 1024 * 1024;
constexpr int kManyEntries = 100'000;
constexpr double kBetweenKeys = 0.1;  // seconds
constexpr double kQuiet = 30;         // seconds: of layout nothing shows until it is done
constexpr double kMostWatched = 120;  // seconds

/// Presses an arrow key again and again, and waits for the panel to pass it on: the way from the
/// keyboard through the panel's main loop and back.
class KeyProbe {
 public:
  KeyProbe(const VisibleScreen& screen, const Previewer& previewer)
      : screen_(screen), previewer_(previewer) {}

  void look(double time) {
    if (isWaiting_) {
      longest_ = std::max(longest_, time - pressed_);
      if (previewer_.selectionEvents() == answered_) return;
      isWaiting_ = false;
      ++count_;
    }
    if (time < pressed_ + kBetweenKeys) return;
    answered_ = previewer_.selectionEvents();
    pressed_ = time;
    isWaiting_ = true;
    screen_.press(XK_Down);
  }
  bool isWaiting() const { return isWaiting_; }
  double longest() const { return longest_; }
  int count() const { return count_; }

 private:
  const VisibleScreen& screen_;
  const Previewer& previewer_;
  double pressed_ = 0;
  double longest_ = 0;
  int answered_ = 0;
  int count_ = 0;
  bool isWaiting_ = false;
};

void showLarge(const VisibleScreen& screen, const Documents& documents, const char* name,
               const std::string& path) {
  Previewer previewer;
  previewer.start();
  const std::string small = documents.markdown(1);
  watch(screen, [&] { previewer.show(small); });
  KeyProbe keys(screen, previewer);
  long mostMemory = 0;
  double nextLook = 0;
  const auto meanwhile = [&](double time) {
    keys.look(time);
    // Reading the memory of gigabytes takes time itself, which is no answer's.
    if (time < nextLook || keys.isWaiting()) return;
    nextLook = time + 1;
    mostMemory = std::max(mostMemory, memoryOf(processTree(previewer.process())));
  };
  const auto seen = watch(screen, [&] { previewer.show(path); },
                          {.quiet = kQuiet, .longest = kMostWatched, .meanwhile = meanwhile});
  if (seen)
    std::printf("| %s | %.2f s | %.2f s | %.0f ms of %d | %ld MB |\n", name, seen->firstText,
                seen->complete, keys.longest() * 1e3, keys.count(), mostMemory / 1024);
  else
    std::printf("| %s | - | not within %.0f s | %.0f ms of %d | %ld MB |\n", name, kMostWatched,
                keys.longest() * 1e3, keys.count(), mostMemory / 1024);
}

}  // namespace

void measureLarge(const VisibleScreen& screen, const Documents& documents) {
  std::puts(
      "\n| 50 MB | first text | last change | longest wait for a key (goal 100 ms) | memory |");
  std::puts("| --- | --- | --- | --- | --- |");
  showLarge(screen, documents, "folder, 100,000 entries", documents.folder(kManyEntries));
  showLarge(screen, documents, "source", documents.source(kFiftyMegabytes));
  showLarge(screen, documents, "JSON", documents.json(kFiftyMegabytes));
  showLarge(screen, documents, "table", documents.table(kFiftyMegabytes));
}

}  // namespace lumisk::bench
