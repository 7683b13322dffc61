#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

#include "bench/corpora.h"
#include "bench/ratios.h"
#include "core/utf8.h"

namespace lumisk::bench {

namespace {

constexpr std::size_t kSize = std::size_t{64} << 20;

/// Reads every byte, as fast as memory gives them.
std::uint64_t scan(std::string_view text) {
  std::uint64_t all[8] = {};
  for (std::size_t at = 0; at + sizeof all <= text.size(); at += sizeof all) {
    std::uint64_t words[8];
    std::memcpy(words, text.data() + at, sizeof words);
    for (std::size_t i = 0; i < 8; ++i) all[i] |= words[i];
  }
  std::uint64_t result = 0;
  for (const std::uint64_t word : all) result |= word;
  return result;
}

Work validationWork(std::string corpus, Target scanTarget, double wantedGigabytesPerSecond) {
  const auto text = std::make_shared<const std::string>(std::move(corpus));
  const auto copy = std::make_shared<std::string>(*text);
  return {text->size(),
          [=] { benchmark::DoNotOptimize(isValidUtf8(*text)); },
          {{"read-only scan", [=] { benchmark::DoNotOptimize(scan(*text)); }, scanTarget},
           {"memchr of a byte that is not there",
            [=] { benchmark::DoNotOptimize(std::memchr(text->data(), 0xFF, text->size())); }},
           {"memcpy",
            [=] {
              std::memcpy(copy->data(), text->data(), text->size());
              benchmark::ClobberMemory();
            }}},
          wantedGigabytesPerSecond};
}

const RatioWork kAscii("UTF-8 validation, ASCII", [] {
  return validationWork(asciiText(kSize), Target::atMostTimes(1.3), 0);
});
const RatioWork kMixed("UTF-8 validation, mixed scripts",
                       [] { return validationWork(mixedScripts(kSize), {}, 1.5); });

}  // namespace

}  // namespace lumisk::bench
