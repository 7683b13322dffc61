#pragma once

#include "core/kernels/kernel_set.h"

namespace lumisk {

// Each is defined in the source file of its name, which the build compiles for those instructions.
// Ask `runnableKernelSets` before calling into one.

extern const KernelSet kPortableKernels;
#ifdef LUMISK_X86_KERNELS
extern const KernelSet kSse2Kernels;
extern const KernelSet kSsse3Kernels;
extern const KernelSet kAvx2Kernels;
#endif

}  // namespace lumisk
