#include "core/kernels/kernel_set.h"

#include <array>

#include "core/kernels/instruction_sets.h"

namespace lumisk {

namespace {

struct RunnableSets {
  std::array<const KernelSet*, 4> sets{};
  std::size_t count = 0;

  void add(const KernelSet& set) { sets[count++] = &set; }
};

RunnableSets findRunnableSets() {
  RunnableSets found;
  found.add(kPortableKernels);
#ifdef LUMISK_X86_KERNELS
  __builtin_cpu_init();
  if (__builtin_cpu_supports("sse2")) found.add(kSse2Kernels);
  if (__builtin_cpu_supports("ssse3")) found.add(kSsse3Kernels);
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
      __builtin_cpu_supports("popcnt")) {
    found.add(kAvx2Kernels);
  }
#endif
  return found;
}

}  // namespace

std::span<const KernelSet* const> runnableKernelSets() {
  static const RunnableSets found = findRunnableSets();
  return {found.sets.data(), found.count};
}

const KernelSet& kernels() {
  static const KernelSet& fastest = *runnableKernelSets().back();
  return fastest;
}

}  // namespace lumisk
