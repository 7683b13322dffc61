#pragma once

#include "core/kernels/block.h"
#include "core/kernels/entity.h"
#include "core/kernels/kernel_set.h"

namespace lumisk {

template <typename Bytes>
struct MarkupCharacters {
  typename Bytes::Vector operator()(typename Bytes::Vector bytes) const {
    return Bytes::either(isAngleBracket<Bytes>(bytes), Bytes::equal(bytes, Bytes::all('&')));
  }
};

template <typename Bytes>
struct AngleBrackets {
  typename Bytes::Vector operator()(typename Bytes::Vector bytes) const {
    return isAngleBracket<Bytes>(bytes);
  }
};

/// How many blocks are asked at once whether they hold any special character. Most texts answer
/// "hardly ever" or "nearly always", and a branch is cheap only when it can be foreseen.
inline constexpr std::size_t kGroup = 4;

/// What a number of blocks may read (a copy runs up to a block and a byte too far) and scribble on.
template <std::size_t kBlocks>
struct EscapeBounds {
  static constexpr std::ptrdiff_t kReads = kBlocks * kBlockSize + kBlockSize + 1;
  static constexpr std::ptrdiff_t kWrites = kBlocks * kBlockSize * 5 + kBlockSize + sizeof(Entity);
};
static_assert(EscapeBounds<1>::kWrites <= static_cast<std::ptrdiff_t>(kEscapeRoom));

/// Escapes the kBlockSize bytes at `in`, of which `specials` tells the special ones; returns the
/// end of what is written. Source text has none or one in most blocks, in no order that a branch
/// could foresee, so the first one is written whether it is there or not: behind the block, it is a
/// byte that counts as copied.
template <typename Bytes>
char* escapeBlock(const char* in, std::uint64_t specials, char* out) {
  Block<Bytes>(in).store(out);
  const std::size_t first = Bytes::lowestBit(specials);
  out = writeEntityOrEnd<Bytes>(out + first, in[first], first);
  std::size_t from = first + 1;
  Block<Bytes>(in + from).store(out);
  for (specials &= specials - 1; specials != 0;) {
    const std::size_t special = Bytes::lowestBit(specials);
    out = writeEntity<Bytes>(out + (special - from), in[special]);
    from = special + 1;
    specials &= specials - 1;
    copyRun<Bytes>(out, in + from, Bytes::lowestBit(specials) - from);
  }
  return out + kBlockSize - from;
}

/// Escapes kGroup blocks.
template <typename Bytes, typename Specials>
char* escapeGroup(const char* in, char* out) {
  std::uint64_t specials[kGroup];
  std::uint64_t any = 0;
  for (std::size_t i = 0; i < kGroup; ++i) {
    specials[i] = Block<Bytes>(in + i * kBlockSize).bitsWhere(Specials{});
    any |= specials[i];
  }
  if (any == 0) {
    for (std::size_t i = 0; i < kGroup; ++i) {
      Block<Bytes>(in + i * kBlockSize).store(out + i * kBlockSize);
    }
    return out + kGroup * kBlockSize;
  }
  for (std::size_t i = 0; i < kGroup; ++i) {
    out = escapeBlock<Bytes>(in + i * kBlockSize, specials[i], out);
  }
  return out;
}

/// Escapes up to a block from a padded copy, so that nothing behind the text is read.
template <typename Bytes, typename Specials>
KernelProgress escapeLastBlock(const char* in, const char* inEnd, char* out) {
  char padded[EscapeBounds<1>::kReads] = {};
  const std::size_t size = least(static_cast<std::size_t>(inEnd - in), kBlockSize);
  __builtin_memcpy(padded, in, size);
  const std::uint64_t specials = Block<Bytes>(padded).bitsWhere(Specials{});
  return {in + size, escapeBlock<Bytes>(padded, specials, out) - (kBlockSize - size)};
}

template <typename Bytes, typename Specials>
KernelProgress escapeBlocks(const char* in, const char* inEnd, char* out, const char* outEnd) {
  using Many = EscapeBounds<kGroup>;
  using One = EscapeBounds<1>;
  while (inEnd - in >= Many::kReads && outEnd - out >= Many::kWrites) {
    out = escapeGroup<Bytes, Specials>(in, out);
    in += kGroup * kBlockSize;
  }
  while (inEnd - in >= One::kReads && outEnd - out >= One::kWrites) {
    out = escapeBlock<Bytes>(in, Block<Bytes>(in).bitsWhere(Specials{}), out);
    in += kBlockSize;
  }
  while (in != inEnd && inEnd - in < One::kReads && outEnd - out >= One::kWrites) {
    const KernelProgress progress = escapeLastBlock<Bytes, Specials>(in, inEnd, out);
    in = progress.in;
    out = progress.out;
  }
  return {in, out};
}

}  // namespace lumisk
