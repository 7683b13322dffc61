#include <benchmark/benchmark.h>

#include <cstdio>
#include <string_view>
#include <vector>

#include "bench/builders.h"
#include "bench/ratios.h"

namespace {

constexpr const char* kUsage =
    "lumisk_bench [ratios|linear|memory|all] [NAME] [--benchmark_…]\n"
    "  ratios   our times beside those of others, as ratios (the default)\n"
    "  linear   throughput of each builder from 1 KB to 256 MB\n"
    "  memory   what each builder takes beyond its input and its page\n"
    "NAME limits it to the works or builders whose name holds it.\n";

// Contenders take turns; a user's own options come later and win.
std::vector<char*> withDefaults(int argc, char** argv) {
  static char interleaving[] = "--benchmark_enable_random_interleaving=true";
  static char repetitions[] = "--benchmark_repetitions=11";
  static char time[] = "--benchmark_min_time=0.1";
  std::vector<char*> arguments(argv, argv + argc);
  arguments.insert(arguments.begin() + 1, {interleaving, repetitions, time});
  return arguments;
}

int run(std::string_view mode, std::string_view name) {
  const bool isAll = mode == "all";
  // First, as a process starts with what its parent holds.
  if (isAll || mode == "memory") lumisk::bench::printMemory(name);
  if (isAll || mode == "ratios") lumisk::bench::printRatios(name);
  if (isAll || mode == "linear") lumisk::bench::printLinearity(name);
  if (isAll || mode == "ratios" || mode == "linear" || mode == "memory") return 0;
  std::fputs(kUsage, stderr);
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> arguments = withDefaults(argc, argv);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  return run(count > 1 ? arguments[1] : "ratios", count > 2 ? arguments[2] : "");
}
