#pragma once

#include <cstddef>

namespace lumisk::bench {

/// Counts what the program's `new` holds, from the start of counting on. Off unless asked for,
/// because counting costs time.
void startHeapCount();
struct HeapCount {
  std::size_t held;
  std::size_t peak;
};
HeapCount stopHeapCount();

}  // namespace lumisk::bench
