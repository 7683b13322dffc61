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

/// What one block may read (a copy runs up to a vector too far) and scribble on.
template <typename Bytes>
struct EscapeBounds {
  static constexpr std::ptrdiff_t kReads = kBlockSize + Bytes::kSize;
  static constexpr std::ptrdiff_t kWrites = kBlockSize * 5 + Bytes::kSize;
  static_assert(kWrites <= static_cast<std::ptrdiff_t>(kEscapeRoom));
};

/// Escapes the kBlockSize bytes at `in`; returns the end of what is written.
template <typename Bytes, typename Specials>
char* escapeBlock(const char* in, char* out) {
  const Block<Bytes> block(in);
  std::uint64_t specials = block.bitsWhere(Specials{});
  if (specials == 0) {
    block.store(out);
    return out + kBlockSize;
  }
  const char* from = in;
  do {
    const char* special = in + lowestBit<Bytes>(specials);
    out = copyRun<Bytes>(out, from, static_cast<std::size_t>(special - from));
    out = writeEntity<Bytes>(out, *special);
    from = special + 1;
    specials &= specials - 1;
  } while (specials != 0);
  return copyRun<Bytes>(out, from, static_cast<std::size_t>(in + kBlockSize - from));
}

/// The same for fewer than a block's reads, from a padded copy so that nothing behind is read.
template <typename Bytes, typename Specials>
KernelProgress escapeLastBlock(const char* in, const char* inEnd, char* out) {
  char padded[EscapeBounds<Bytes>::kReads] = {};
  const std::ptrdiff_t left = inEnd - in;
  const std::size_t size =
      left < std::ptrdiff_t{kBlockSize} ? static_cast<std::size_t>(left) : kBlockSize;
  __builtin_memcpy(padded, in, size);
  return {in + size, escapeBlock<Bytes, Specials>(padded, out) - (kBlockSize - size)};
}

template <typename Bytes, typename Specials>
KernelProgress escapeBlocks(const char* in, const char* inEnd, char* out, const char* outEnd) {
  using Bounds = EscapeBounds<Bytes>;
  while (inEnd - in >= Bounds::kReads && outEnd - out >= Bounds::kWrites) {
    out = escapeBlock<Bytes, Specials>(in, out);
    in += kBlockSize;
  }
  while (in != inEnd && inEnd - in < Bounds::kReads && outEnd - out >= Bounds::kWrites) {
    const KernelProgress progress = escapeLastBlock<Bytes, Specials>(in, inEnd, out);
    in = progress.in;
    out = progress.out;
  }
  return {in, out};
}

}  // namespace lumisk
