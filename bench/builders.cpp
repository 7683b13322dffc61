#include "bench/builders.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

#include "bench/bench_output.h"

namespace lumisk::bench {

namespace {

constexpr std::size_t kSmallest = 1024;
constexpr std::size_t kLargest = std::size_t{256} << 20;
constexpr std::size_t kMemoryInput = std::size_t{200} << 20;

std::vector<Builder>& registeredBuilders() {
  static std::vector<Builder> builders;
  return builders;
}

std::vector<Builder> buildersNamed(std::string_view filter) {
  std::vector<Builder> found;
  for (const Builder& builder : registeredBuilders()) {
    if (builder.name.find(filter) != std::string::npos) found.push_back(builder);
  }
  return found;
}

/// Processor time, which is the time that passes unless other programs take the processor.
double secondsOf(const std::function<void()>& run) {
  const std::clock_t start = std::clock();
  run();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Median over as many runs as 100 ms hold, at least five.
double medianSeconds(const std::function<void()>& run) {
  std::vector<double> seconds;
  double sum = 0;
  while (seconds.size() < 5 || (sum < 0.1 && seconds.size() < 1000)) {
    seconds.push_back(secondsOf(run));
    sum += seconds.back();
  }
  std::nth_element(seconds.begin(),
                   seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2),
                   seconds.end());
  return seconds[seconds.size() / 2];
}

std::string sizeName(std::size_t size) {
  return size < (1U << 20) ? std::to_string(size >> 10) + " KB"
                           : std::to_string(size >> 20) + " MB";
}

// So many bytes at a time that the clock's steps do not matter.
constexpr std::size_t kTimedAtOnce = std::size_t{4} << 20;

void printThroughput(const Builder& builder, std::string_view text) {
  StreamedOutput out;
  const std::size_t times = std::max<std::size_t>(1, kTimedAtOnce / text.size());
  const double seconds = medianSeconds([&] {
    for (std::size_t i = 0; i < times; ++i) builder.write(out, text);
  });
  std::printf("%12.2f", static_cast<double>(text.size() * times) / 1e9 / seconds);
  std::fflush(stdout);
}

/// In a process of its own, whose peak is the builder's.
void printMemoryOf(const Builder& builder) {
  const std::string text = builder.corpus(kMemoryInput);
  const std::string page = builder.build(text);
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const double peak = static_cast<double>(usage.ru_maxrss) / 1024;
  const double input = static_cast<double>(text.size()) / (1 << 20);
  const double output = static_cast<double>(page.size()) / (1 << 20);
  std::printf("%-24s %8.1f MB input %8.1f MB page %8.1f MB peak %6.1f MB beyond (target 8)\n",
              builder.name.c_str(), input, output, peak, peak - input - output);
  std::fflush(stdout);
}

}  // namespace

RegisteredBuilder::RegisteredBuilder(Builder builder) {
  registeredBuilders().push_back(std::move(builder));
}

void printLinearity(std::string_view filter) {
  const std::vector<Builder> builders = buildersNamed(filter);
  std::printf("GB/s by size of input\n%8s", "");
  for (const Builder& builder : builders) std::printf("%12s", builder.name.c_str());
  for (std::size_t size = kSmallest; size <= kLargest; size *= 4) {
    std::printf("\n%8s", sizeName(size).c_str());
    for (const Builder& builder : builders) printThroughput(builder, builder.corpus(size));
  }
  std::printf("\n");
}

void printMemory(std::string_view filter) {
  for (const Builder& builder : buildersNamed(filter)) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
      printMemoryOf(builder);
      _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) < 0 || status != 0) {
      std::printf("%s: not measured\n", builder.name.c_str());
    }
  }
}

}  // namespace lumisk::bench
