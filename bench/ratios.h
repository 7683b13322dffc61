#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace lumisk::bench {

/// What is wanted of our time beside a peer's.
struct Target {
  enum class Kind { None, AtMostTimes, AtLeastFaster };
  Kind kind = Kind::None;
  double figure = 0;

  /// Ours takes at most `figure` × the peer's time.
  static Target atMostTimes(double figure) { return {Kind::AtMostTimes, figure}; }
  /// The peer takes at least `figure` × our time.
  static Target atLeastFaster(double figure) { return {Kind::AtLeastFaster, figure}; }
};

/// Another way to do the work, or a bound for it.
struct Peer {
  std::string name;
  std::function<void()> run;
  Target target = {};
};

/// A piece of work, ours and the others'. They take turns within one run of Google Benchmark, and
/// what is compared are their medians, so that a slow moment of the machine hits all of them.
struct Work {
  std::size_t bytes;  ///< of input, for the throughput
  std::function<void()> ours;
  std::vector<Peer> peers;
  double wantedGigabytesPerSecond = 0;
};

/// Puts a piece of work into the ratio table. `make` is called when it is measured, so that one
/// corpus at a time is in memory. For use at namespace scope, in any file of the program:
///
///     const RatioWork kEscape("escape, source text", [] { return Work{…}; });
class RatioWork {
 public:
  RatioWork(std::string name, std::function<Work()> make);
};

/// Measures the registered works whose name holds `filter`; prints a line for each contender.
void printRatios(std::string_view filter);

}  // namespace lumisk::bench
