#include <bit>

#include "core/kernels/count_blocks.h"
#include "core/kernels/escape_blocks.h"
#include "core/kernels/instruction_sets.h"
#include "core/kernels/table_blocks.h"
#include "core/utf8_sequence.h"

namespace lumisk {

namespace {

/// Eight bytes in a general register; byte i of memory is bits 8i and up, whatever the machine.
struct WordBytes {
  using Vector = std::uint64_t;
  static constexpr std::size_t kSize = 8;
  static constexpr Vector kOnes = 0x0101010101010101;
  static constexpr Vector kTopBits = kOnes * 0x80;

  static Vector inMemoryOrder(Vector word) {
    return std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
  }
  static Vector load(const char* from) {
    Vector word;
    __builtin_memcpy(&word, from, sizeof word);
    return inMemoryOrder(word);
  }
  static void store(char* to, Vector word) {
    word = inMemoryOrder(word);
    __builtin_memcpy(to, &word, sizeof word);
  }
  static std::size_t lowestBit(std::uint64_t bits) {
    return bits == 0 ? 64 : static_cast<std::size_t>(__builtin_ctzll(bits));
  }
  static Vector all(char byte) { return kOnes * static_cast<unsigned char>(byte); }
  static Vector either(Vector a, Vector b) { return a | b; }
  static Vector equal(Vector a, Vector b) {
    // No carry leaves a byte, so each byte's answer is its own.
    const Vector difference = a ^ b;
    return ~(((difference & ~kTopBits) + ~kTopBits) | difference);
  }
  static Vector above(Vector bytes, char least) {
    // Of the low seven bits: byte + 127 - least sets the top bit, and no carry leaves a byte.
    return ((bytes & ~kTopBits) + (~kTopBits - all(least))) & ~bytes;
  }
  static std::uint64_t topBits(Vector word) {
    // The product's top byte collects the eight bits, each moved by another distance.
    return (((word & kTopBits) >> 7) * 0x0102040810204080) >> 56;
  }
};

/// Where the ASCII text that starts at `in` ends, to within a word.
const char* skipAscii(const char* in, const char* inEnd) {
  while (inEnd - in >= 8 && (WordBytes::load(in) & WordBytes::kTopBits) == 0) in += 8;
  return in;
}

bool isUtf8(const char* in, const char* inEnd) {
  while (in != inEnd) {
    if (static_cast<signed char>(*in) >= 0) {
      const char* next = skipAscii(in, inEnd);
      in = next == in ? in + 1 : next;
      continue;
    }
    const std::size_t length = utf8SequenceLength(in, inEnd);
    if (length == 0) return false;
    in += length;
  }
  return true;
}

}  // namespace

constinit const KernelSet kPortableKernels = {
    "portable",
    escapeBlocks<WordBytes, MarkupCharacters<WordBytes>>,
    escapeBlocks<WordBytes, AngleBrackets<WordBytes>>,
    countEitherInBlocks<WordBytes>,
    isUtf8,
    writeRowsInBlocks<WordBytes>,
};

}  // namespace lumisk
