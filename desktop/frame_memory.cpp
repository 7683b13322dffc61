#include "desktop/frame_memory.h"

#include <malloc.h>

namespace lumisk::desktop {
namespace {

/// Holds one buffer of a window on a screen of 3840 x 2160 pixels; a larger block, which is a
/// large document's, goes back with it.
constexpr int kLargestKept = 32 << 20;       // bytes; the most that the C library allows
constexpr int kMostKept = 2 * kLargestKept;  // bytes

}  // namespace

void keepFrameMemory() {
  // The second without the first would have each buffer of a frame mapped and unmapped.
  if (mallopt(M_MMAP_THRESHOLD, kLargestKept) == 1) mallopt(M_TRIM_THRESHOLD, kMostKept);
}

void releaseFrameMemory() { malloc_trim(0); }

}  // namespace lumisk::desktop
