#pragma once

#include "core/kernels/block.h"

namespace lumisk {

template <typename Bytes>
std::size_t countEitherInBlocks(const char* in, const char* inEnd, char one, char other) {
  std::size_t count = 0;
  const auto isCounted = [one, other](typename Bytes::Vector bytes) {
    return Bytes::either(Bytes::equal(bytes, Bytes::all(one)),
                         Bytes::equal(bytes, Bytes::all(other)));
  };
  for (; inEnd - in >= std::ptrdiff_t{kBlockSize}; in += kBlockSize) {
    count += static_cast<std::size_t>(__builtin_popcountll(Block<Bytes>(in).bitsWhere(isCounted)));
  }
  for (; in != inEnd; ++in) count += static_cast<std::size_t>(*in == one || *in == other);
  return count;
}

}  // namespace lumisk
