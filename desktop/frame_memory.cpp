#include "desktop/frame_memory.h"

#include <malloc.h>

namespace lumisk::desktop {
namespace {

/// Holds one buffer of a window on a screen of 3840 x 2160 pixels; a larger block, which is a
/// large document's, goes back with it.
constexpr int kLargestKept = 34 << 20;       // bytes
constexpr int kMostKept = 2 * kLargestKept;  // bytes

}  // namespace

void keepFrameMemory() {
  mallopt(M_MMAP_THRESHOLD, kLargestKept);
  mallopt(M_TRIM_THRESHOLD, kMostKept);
}

void releaseFrameMemory() { malloc_trim(0); }

}  // namespace lumisk::desktop
