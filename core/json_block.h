#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lumisk::json {

// Some bytes of text looked at together. A mask has bit i set when byte i is of the kind asked for.
// Every type of block answers alike; the formatter is written once for all of them.

/// What bytes of JSON text are to the formatter.
enum ByteKind : std::uint8_t {
  kStringStop = 1,  ///< ends the plain part of a string: " \ controls, and & < >
  kBlank = 2,       ///< white space between tokens
  kDigit = 4,
};

inline constexpr std::array<std::uint8_t, 256> kByteKinds = [] {
  std::array<std::uint8_t, 256> kinds{};
  const auto add = [&kinds](char byte, ByteKind kind) {
    kinds[static_cast<unsigned char>(byte)] |= kind;
  };
  for (char control = 0; control < ' '; ++control) add(control, kStringStop);
  for (const char stop : {'"', '\\', '&', '<', '>'}) add(stop, kStringStop);
  for (const char blank : {' ', '\t', '\n', '\r'}) add(blank, kBlank);
  for (char digit = '0'; digit <= '9'; ++digit) add(digit, kDigit);
  return kinds;
}();

inline bool isOfKind(char byte, ByteKind kind) {
  return (kByteKinds[static_cast<unsigned char>(byte)] & kind) != 0;
}

/// For machines without one of the instruction sets below, and to test those against.
class PortableBlock {
 public:
  static constexpr std::size_t kSize = 16;

  static PortableBlock load(const char* from) {
    PortableBlock block{};
    std::memcpy(block.bytes_.data(), from, kSize);
    return block;
  }
  void store(char* to) const { std::memcpy(to, bytes_.data(), kSize); }

  std::uint32_t stringStops() const { return mask(kStringStop); }
  std::uint32_t nonBlanks() const { return mask(kBlank) ^ kAll; }
  std::uint32_t nonDigits() const { return mask(kDigit) ^ kAll; }

 private:
  static constexpr std::uint32_t kAll = 0xFFFF;

  std::uint32_t mask(ByteKind kind) const {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kSize; ++i) {
      bits |= static_cast<std::uint32_t>(isOfKind(bytes_[i], kind)) << i;
    }
    return bits;
  }

  std::array<char, kSize> bytes_;
};

#if defined(__SSE2__)

/// Every x86-64 processor has these instructions.
class Sse2Block {
 public:
  static constexpr std::size_t kSize = 16;

  static Sse2Block load(const char* from) {
    return Sse2Block(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
  }
  void store(char* to) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes_); }

  std::uint32_t stringStops() const {
    // Each pair differs in one bit: " and &, < and >.
    const __m128i quotes = equal(_mm_and_si128(bytes_, all(~0x04)), '"');
    const __m128i angles = equal(_mm_or_si128(bytes_, all(0x02)), '>');
    const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(bytes_, all(0x1F)), bytes_);
    return mask(
        _mm_or_si128(_mm_or_si128(quotes, angles), _mm_or_si128(controls, equal(bytes_, '\\'))));
  }
  std::uint32_t nonBlanks() const {
    const __m128i spaces = _mm_or_si128(equal(bytes_, ' '), equal(bytes_, '\n'));
    const __m128i others = _mm_or_si128(equal(bytes_, '\t'), equal(bytes_, '\r'));
    return mask(_mm_or_si128(spaces, others)) ^ 0xFFFFU;
  }
  std::uint32_t nonDigits() const {
    const __m128i values = _mm_sub_epi8(bytes_, all('0'));
    return mask(_mm_cmpeq_epi8(_mm_min_epu8(values, all(9)), values)) ^ 0xFFFFU;
  }

 private:
  explicit Sse2Block(__m128i bytes) : bytes_(bytes) {}

  static __m128i all(int byte) { return _mm_set1_epi8(static_cast<char>(byte)); }
  static __m128i equal(__m128i bytes, char byte) { return _mm_cmpeq_epi8(bytes, all(byte)); }
  static std::uint32_t mask(__m128i bytes) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
  }

  __m128i bytes_;
};

using NativeBlock = Sse2Block;

#else

using NativeBlock = PortableBlock;

#endif

}  // namespace lumisk::json
