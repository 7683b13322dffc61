#pragma once

namespace lumisk::desktop {

/// Keeps the memory of one frame of the window for the next. Drawn by the processor, a frame takes
/// several buffers of the window's size, of some megabytes each, and the C library would hand each
/// back to the kernel at once, which clears the next one page by page: a fifth of what the program
/// computes for a preview. To be called before the first thread is started.
void keepFrameMemory();

/// Hands back what nothing uses, as after the last frame for a while. Takes a few milliseconds.
void releaseFrameMemory();

}  // namespace lumisk::desktop
