#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace lumisk {

// In every file that includes this the type is another one: it is compiled for other instructions.
namespace {

struct SseBytes {
  using Vector = __m128i;
  static constexpr std::size_t kSize = 16;

  static Vector load(const char* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  }
  static void store(char* to, Vector bytes) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
  }
  static std::size_t lowestBit(std::uint64_t bits) {
    return bits == 0 ? 64 : static_cast<std::size_t>(__builtin_ctzll(bits));
  }
  static Vector all(char byte) { return _mm_set1_epi8(byte); }
  static Vector either(Vector a, Vector b) { return _mm_or_si128(a, b); }
  static Vector equal(Vector a, Vector b) { return _mm_cmpeq_epi8(a, b); }
  static Vector above(Vector bytes, char least) { return _mm_cmpgt_epi8(bytes, all(least)); }
  static std::uint64_t topBits(Vector bytes) {
    return static_cast<unsigned>(_mm_movemask_epi8(bytes));
  }
};

}  // namespace

}  // namespace lumisk
