#include "heap_count.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace lumisk::bench {
namespace {

std::atomic<bool> isCounting = false;
std::atomic<long> held = 0;
std::atomic<long> peak = 0;

void count(long size) {
  const long now = held += size;
  long former = peak;
  while (now > former && !peak.compare_exchange_weak(former, now)) {
  }
}

}  // namespace

void startHeapCount() {
  held = 0;
  peak = 0;
  isCounting = true;
}

HeapCount stopHeapCount() {
  isCounting = false;
  return {static_cast<std::size_t>(std::max(held.load(), 0L)),
          static_cast<std::size_t>(peak.load())};
}

void* allocate(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) std::abort();
  if (isCounting) count(static_cast<long>(malloc_usable_size(memory)));
  return memory;
}

void release(void* memory) {
  if (isCounting && memory != nullptr) count(-static_cast<long>(malloc_usable_size(memory)));
  std::free(memory);
}

}  // namespace lumisk::bench

void* operator new(std::size_t size) { return lumisk::bench::allocate(size); }
void* operator new[](std::size_t size) { return lumisk::bench::allocate(size); }
void operator delete(void* memory) noexcept { lumisk::bench::release(memory); }
void operator delete[](void* memory) noexcept { lumisk::bench::release(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  lumisk::bench::release(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  lumisk::bench::release(memory);
}
