#include <tmmintrin.h>

#include "core/kernels/count_blocks.h"
#include "core/kernels/escape_blocks.h"
#include "core/kernels/instruction_sets.h"
#include "core/kernels/sse_bytes.h"
#include "core/kernels/table_blocks.h"
#include "core/kernels/utf8_blocks.h"

namespace lumisk {

namespace {

struct Ssse3Bytes : SseBytes {
  static Vector table(const std::uint8_t (&entries)[16]) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(entries));
  }
  static Vector lookUp(Vector entries, Vector bytes) { return _mm_shuffle_epi8(entries, bytes); }
  static Vector lowHalves(Vector bytes) { return both(bytes, all(0x0F)); }
  static Vector highHalves(Vector bytes) { return both(_mm_srli_epi16(bytes, 4), all(0x0F)); }
  static Vector both(Vector a, Vector b) { return _mm_and_si128(a, b); }
  static Vector differing(Vector a, Vector b) { return _mm_xor_si128(a, b); }
  static Vector lessSaturated(Vector a, Vector b) { return _mm_subs_epu8(a, b); }
  template <int N>
  static Vector before(Vector bytes, Vector last) {
    return _mm_alignr_epi8(bytes, last, 16 - N);
  }
  static bool isAscii(Vector bytes) { return _mm_movemask_epi8(bytes) == 0; }
  static bool isZero(Vector bytes) {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())) == 0xFFFF;
  }
};

}  // namespace

constinit const KernelSet kSsse3Kernels = {
    "ssse3",
    escapeBlocks<Ssse3Bytes, MarkupCharacters<Ssse3Bytes>>,
    escapeBlocks<Ssse3Bytes, AngleBrackets<Ssse3Bytes>>,
    countEitherInBlocks<Ssse3Bytes>,
    isUtf8InBlocks<Ssse3Bytes>,
    writeRowsInBlocks<Ssse3Bytes>,
};

}  // namespace lumisk
