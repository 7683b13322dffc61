#include "core/kernels/count_blocks.h"
#include "core/kernels/escape_blocks.h"
#include "core/kernels/instruction_sets.h"
#include "core/kernels/sse_bytes.h"
#include "core/kernels/table_blocks.h"

namespace lumisk {

namespace {

// SSE2 has no table look-up, and without it vectors do not help with UTF-8.
bool isUtf8(const char* in, const char* inEnd) { return kPortableKernels.isUtf8(in, inEnd); }

}  // namespace

constinit const KernelSet kSse2Kernels = {
    "sse2",
    escapeBlocks<SseBytes, MarkupCharacters<SseBytes>>,
    escapeBlocks<SseBytes, AngleBrackets<SseBytes>>,
    countEitherInBlocks<SseBytes>,
    isUtf8,
    writeRowsInBlocks<SseBytes>,
};

}  // namespace lumisk
