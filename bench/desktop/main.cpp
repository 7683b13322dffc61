// desktop_bench [warm|cold|large|memory|endurance|all]
//
// Measures the installed previewer from outside, as a person meets it: a request over the session
// bus or from a terminal, keys from the keyboard, and pixels on the screen. Needs an X display, a
// window manager and a session bus of its own: run it under tests/desktop/with-display.

#include <cstdio>
#include <string_view>

#include "bench/desktop/benches.h"

namespace {

using namespace lumisk::bench;

struct Part {
  std::string_view name;
  void (*measure)(const VisibleScreen&, const Documents&);
};

constexpr Part kParts[] = {{"warm", measureWarm},
                           {"cold", measureCold},
                           {"memory", measureMemory},
                           {"large", measureLarge},
                           {"endurance", measureEndurance}};

}  // namespace

int main(int argc, char** argv) {
  const std::string_view wanted = argc > 1 ? argv[1] : "all";
  std::setvbuf(stdout, nullptr, _IOLBF, 0);  // a row is worth seeing as soon as it is there
  const VisibleScreen screen;
  const Documents documents;
  bool isKnown = false;
  for (const Part& part : kParts) {
    if (wanted != "all" && wanted != part.name) continue;
    part.measure(screen, documents);
    isKnown = true;
  }
  if (isKnown) return 0;
  std::fputs("usage: desktop_bench [warm|cold|memory|large|endurance|all]\n", stderr);
  return 2;
}
