#include <immintrin.h>

#include "core/kernels/count_blocks.h"
#include "core/kernels/escape_blocks.h"
#include "core/kernels/instruction_sets.h"
#include "core/kernels/table_blocks.h"
#include "core/kernels/utf8_blocks.h"

namespace lumisk {

namespace {

struct AvxBytes {
  using Vector = __m256i;
  static constexpr std::size_t kSize = 32;

  static Vector load(const char* from) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
  }
  static void store(char* to, Vector bytes) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), bytes);
  }
  static std::size_t lowestBit(std::uint64_t bits) { return _tzcnt_u64(bits); }
  static Vector all(char byte) { return _mm256_set1_epi8(byte); }
  static Vector either(Vector a, Vector b) { return _mm256_or_si256(a, b); }
  static Vector equal(Vector a, Vector b) { return _mm256_cmpeq_epi8(a, b); }
  static Vector above(Vector bytes, char least) { return _mm256_cmpgt_epi8(bytes, all(least)); }
  static std::uint64_t topBits(Vector bytes) {
    return static_cast<unsigned>(_mm256_movemask_epi8(bytes));
  }

  static Vector table(const std::uint8_t (&entries)[16]) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(entries)));
  }
  static Vector lookUp(Vector entries, Vector bytes) { return _mm256_shuffle_epi8(entries, bytes); }
  static Vector lowHalves(Vector bytes) { return both(bytes, all(0x0F)); }
  static Vector highHalves(Vector bytes) { return both(_mm256_srli_epi16(bytes, 4), all(0x0F)); }
  static Vector both(Vector a, Vector b) { return _mm256_and_si256(a, b); }
  static Vector differing(Vector a, Vector b) { return _mm256_xor_si256(a, b); }
  static Vector lessSaturated(Vector a, Vector b) { return _mm256_subs_epu8(a, b); }
  template <int N>
  static Vector before(Vector bytes, Vector last) {
    // The two halves shift apart, so each is paired with the half before it.
    return _mm256_alignr_epi8(bytes, _mm256_permute2x128_si256(last, bytes, 0x21), 16 - N);
  }
  static bool isAscii(Vector bytes) { return _mm256_movemask_epi8(bytes) == 0; }
  static bool isZero(Vector bytes) { return _mm256_testz_si256(bytes, bytes) != 0; }
};

}  // namespace

constinit const KernelSet kAvx2Kernels = {
    "avx2",
    escapeBlocks<AvxBytes, MarkupCharacters<AvxBytes>>,
    escapeBlocks<AvxBytes, AngleBrackets<AvxBytes>>,
    countEitherInBlocks<AvxBytes>,
    isUtf8InBlocks<AvxBytes>,
    writeRowsInBlocks<AvxBytes>,
};

}  // namespace lumisk
