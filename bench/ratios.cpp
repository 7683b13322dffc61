#include "bench/ratios.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <utility>

namespace lumisk::bench {

namespace {

constexpr const char* kOurs = "lumisk";

using NamedWork = std::pair<std::string, std::function<Work()>>;

std::vector<NamedWork>& registeredWorks() {
  static std::vector<NamedWork> works;
  return works;
}

/// Keeps the median of each contender: of the processor time, which is the time that passes unless
/// other programs take the processor.
class MedianReporter final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
        milliseconds_[run.run_name.function_name] = run.GetAdjustedCPUTime();
      }
    }
  }

  double millisecondsOf(const std::string& name) const { return milliseconds_.at(name); }

 private:
  std::map<std::string, double> milliseconds_;
};

void registerContender(const std::string& name, const std::function<void()>& run) {
  benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
    for ([[maybe_unused]] const auto iteration : state) run();
  })->Unit(benchmark::kMillisecond);
}

std::string verdict(const Target& target, double ours, double peer) {
  char text[64] = "";
  if (target.kind == Target::Kind::AtMostTimes) {
    std::snprintf(text, sizeof text, "at most %.1f×: %s", target.figure,
                  ours <= target.figure * peer ? "met" : "MISSED");
  } else if (target.kind == Target::Kind::AtLeastFaster) {
    std::snprintf(text, sizeof text, "at least %.0f× faster: %s", target.figure,
                  peer >= target.figure * ours ? "met" : "MISSED");
  }
  return text;
}

double gigabytesPerSecond(std::size_t bytes, double milliseconds) {
  return static_cast<double>(bytes) / (milliseconds * 1e6);
}

void printOurs(const Work& work, double milliseconds) {
  const double speed = gigabytesPerSecond(work.bytes, milliseconds);
  std::printf("  %-40s %9.2f ms %7.2f GB/s", kOurs, milliseconds, speed);
  if (work.wantedGigabytesPerSecond > 0) {
    std::printf("%28s at least %.1f GB/s: %s", "", work.wantedGigabytesPerSecond,
                speed >= work.wantedGigabytesPerSecond ? "met" : "MISSED");
  }
  std::printf("\n");
}

void printPeer(const Work& work, const Peer& peer, double ours, double theirs) {
  std::printf("  %-40s %9.2f ms %7.2f GB/s   ours %5.2f×, %5.1f× faster  %s\n", peer.name.c_str(),
              theirs, gigabytesPerSecond(work.bytes, theirs), ours / theirs, theirs / ours,
              verdict(peer.target, ours, theirs).c_str());
}

void measure(const std::string& name, const Work& work) {
  benchmark::ClearRegisteredBenchmarks();
  registerContender(kOurs, work.ours);
  for (const Peer& peer : work.peers) registerContender(peer.name, peer.run);
  MedianReporter medians;
  benchmark::RunSpecifiedBenchmarks(&medians, ".");
  std::printf("%s, %.1f MB\n", name.c_str(), static_cast<double>(work.bytes) / 1e6);
  const double ours = medians.millisecondsOf(kOurs);
  printOurs(work, ours);
  for (const Peer& peer : work.peers) {
    printPeer(work, peer, ours, medians.millisecondsOf(peer.name));
  }
  std::fflush(stdout);
}

}  // namespace

RatioWork::RatioWork(std::string name, std::function<Work()> make) {
  registeredWorks().emplace_back(std::move(name), std::move(make));
}

void printRatios(std::string_view filter) {
  for (const auto& [name, make] : registeredWorks()) {
    if (name.find(filter) != std::string::npos) measure(name, make());
  }
}

}  // namespace lumisk::bench
