#pragma once

#include <cstddef>
#include <cstdint>

namespace lumisk {

/// The bytes a kernel looks at in one step: as many as a mask has bits.
inline constexpr std::size_t kBlockSize = 64;

// Not shared between files: see kernel_set.h on what must not be.
static constexpr std::size_t least(std::size_t a, std::size_t b) { return a < b ? a : b; }

/// kBlockSize bytes in registers.
///
/// `Bytes` names an instruction set's vector and what can be done with it:
///
///     Vector load(const char*)          void store(char*, Vector)
///     Vector all(char)                  the byte in every place
///     Vector either(Vector, Vector)     bitwise or
///     Vector equal(Vector, Vector)      top bit set in the bytes that are equal, other bits any
///     Vector above(Vector, char)        the same for the ASCII bytes above an ASCII character
///     uint64_t topBits(Vector)          the top bit of byte i as bit i
///     size_t lowestBit(uint64_t)        index of the lowest set bit; 64 when there is none
///
/// It must have internal linkage, and so has then all that is instantiated with it.
template <typename Bytes>
struct Block {
  using Vector = typename Bytes::Vector;
  static constexpr std::size_t kCount = kBlockSize / Bytes::kSize;

  explicit Block(const char* from) {
    for (std::size_t i = 0; i < kCount; ++i) parts[i] = Bytes::load(from + i * Bytes::kSize);
  }

  void store(char* to) const {
    for (std::size_t i = 0; i < kCount; ++i) Bytes::store(to + i * Bytes::kSize, parts[i]);
  }

  /// Bit i tells whether `test`, from vector to vector, sets the top bit of byte i.
  template <typename Test>
  std::uint64_t bitsWhere(Test test) const {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
      bits |= std::uint64_t{Bytes::topBits(test(parts[i]))} << (i * Bytes::kSize);
    }
    return bits;
  }

  Vector parts[kCount];
};

/// Copies `length` bytes in whole vectors and returns the end of the copy. Up to a vector more is
/// read and written; that is what makes short runs cheap.
template <typename Bytes>
char* copyRun(char* to, const char* from, std::size_t length) {
  std::size_t done = 0;
  do {
    Bytes::store(to + done, Bytes::load(from + done));
    done += Bytes::kSize;
  } while (done < length);
  return to + length;
}

/// '<' and '>' differ in one bit.
template <typename Bytes>
typename Bytes::Vector isAngleBracket(typename Bytes::Vector bytes) {
  return Bytes::equal(Bytes::either(bytes, Bytes::all('<' ^ '>')), Bytes::all('>'));
}

}  // namespace lumisk
