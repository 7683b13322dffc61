// engine_bench
//
// The engine without the previewer: the same pages in one warm web view, alone in a plain window,
// from the load to the first frame of the finished page. What the panel takes beyond this is its
// own. Needs an X display: run it under tests/desktop/with-display.

#include <gtk/gtk.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "bench/desktop/documents.h"
#include "desktop/live_view.h"

namespace {

using namespace lumisk;

constexpr int kRounds = 11;  // the first one fills caches and is not counted
constexpr int kWidth = 880;
constexpr int kHeight = 940;
constexpr gulong kBetween = 700;  // milliseconds

double now() { return static_cast<double>(g_get_monotonic_time()) / 1000; }

void iterateUntil(const bool& isDone) {
  while (!isDone) g_main_context_iteration(nullptr, TRUE);
}

void rest() {
  bool isOver = false;
  g_timeout_add_once(
      kBetween, [](gpointer over) { *static_cast<bool*>(over) = true; }, &isOver);
  iterateUntil(isOver);
}

/// The finished page of the file at `path`, in a file beside it.
std::string writePage(const std::string& path) {
  const char* const command[] = {LUMISK_COMMAND, "page", path.c_str(), nullptr};
  char* page = nullptr;
  g_spawn_sync(nullptr, const_cast<char**>(command), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr,
               &page, nullptr, nullptr, nullptr);
  const std::string target = path + ".html";
  std::ofstream(target, std::ios::binary) << (page == nullptr ? "" : page);
  g_free(page);
  return target;
}

/// Milliseconds from the load to the page's frame, or to the end of the load where that is later.
double loadOnce(desktop::LiveView& live, const std::string& page) {
  bool isFinished = false;
  bool isDrawn = false;
  live.onFinished = [&] { isFinished = true; };
  live.onDrawn = [&] { isDrawn = true; };
  const double start = now();
  live.load("file://" + page);
  iterateUntil(isFinished);
  iterateUntil(isDrawn);
  const double end = now();
  live.scrub();
  rest();
  return end - start;
}

void measure(desktop::LiveView& live, const char* name, const std::string& path) {
  const std::string page = writePage(path);
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) times.push_back(loadOnce(live, page));
  times.erase(times.begin());
  std::sort(times.begin(), times.end());
  std::printf("| %s | %.0f ms | %.0f to %.0f ms |\n", name,
              (times[times.size() / 2 - 1] + times[times.size() / 2]) / 2, times.front(),
              times.back());
}

}  // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  gtk_init();
  const bench::Documents documents;
  desktop::WebEngine engine({LUMISK_EXTENSION_FOLDER, LUMISK_STORE_FOLDER});
  desktop::LiveView live(engine);
  GtkWidget* window = gtk_window_new();
  gtk_window_set_default_size(GTK_WINDOW(window), kWidth, kHeight);
  gtk_window_set_child(GTK_WINDOW(window), live.widget());
  gtk_window_present(GTK_WINDOW(window));
  std::puts("\n| the engine alone | complete | range |");
  std::puts("| --- | --- | --- |");
  measure(live, "source, 100 KB", documents.source(std::size_t{100} * 1024));
  measure(live, "JSON, 100 KB", documents.json(std::size_t{100} * 1024));
  measure(live, "table, 100 KB", documents.table(std::size_t{100} * 1024));
  gtk_window_destroy(GTK_WINDOW(window));
  return 0;
}
