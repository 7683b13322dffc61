#pragma once

#include <cstddef>
#include <cstdint>

#include "core/kernels/block.h"

namespace lumisk {

/// What a character is written as. Copied as a whole: eight bytes are one store.
struct Entity {
  char text[7];
  std::uint8_t length;
};

// '&', '<' and '>' differ in their low five bits. The upper half of the table is for a place behind
// a block, whatever the character there.
inline constexpr std::size_t kEntityIndexMask = 0x1F;
inline constexpr std::size_t kBehindBlock = kEntityIndexMask + 1;

struct EntityTable {
  Entity entities[2 * kBehindBlock] = {};
};

constexpr EntityTable makeEntityTable() {
  EntityTable table;
  table.entities['&' & kEntityIndexMask] = {"&amp;", 5};
  table.entities['<' & kEntityIndexMask] = {"&lt;", 4};
  table.entities['>' & kEntityIndexMask] = {"&gt;", 4};
  for (std::size_t i = kBehindBlock; i < 2 * kBehindBlock; ++i) table.entities[i].length = 1;
  return table;
}

inline constexpr EntityTable kEntityTable = makeEntityTable();

template <typename Bytes>
char* writeEntityAt(char* out, std::size_t index) {
  const Entity& entity = kEntityTable.entities[index];
  __builtin_memcpy(out, &entity, sizeof entity);
  return out + entity.length;
}

/// Writes the entity for `character`, scribbling on eight bytes, and returns its end.
template <typename Bytes>
char* writeEntity(char* out, char character) {
  return writeEntityAt<Bytes>(out, static_cast<unsigned char>(character) & kEntityIndexMask);
}

/// The same for the character at `place` of a block; at kBlockSize one byte counts as written.
template <typename Bytes>
char* writeEntityOrEnd(char* out, char character, std::size_t place) {
  static_assert(kBlockSize == 2 * kBehindBlock);
  return writeEntityAt<Bytes>(
      out, (static_cast<unsigned char>(character) & kEntityIndexMask) | (place & kBlockSize) / 2);
}

}  // namespace lumisk
