#pragma once

#include <cstddef>
#include <cstdint>

namespace lumisk {

/// What a character is written as. Copied as a whole: eight bytes are one store.
struct Entity {
  char text[7];
  std::uint8_t length;
};

// Indexed by the low five bits of '&', '<' and '>', in which they differ.
inline constexpr std::size_t kEntityIndexMask = 0x1F;

struct EntityTable {
  Entity entities[kEntityIndexMask + 1] = {};
};

constexpr EntityTable makeEntityTable() {
  EntityTable table;
  table.entities['&' & kEntityIndexMask] = {"&amp;", 5};
  table.entities['<' & kEntityIndexMask] = {"&lt;", 4};
  table.entities['>' & kEntityIndexMask] = {"&gt;", 4};
  return table;
}

inline constexpr EntityTable kEntityTable = makeEntityTable();

/// Writes the entity for `character`, scribbling on eight bytes, and returns its end.
template <typename Bytes>
char* writeEntity(char* out, char character) {
  const Entity& entity =
      kEntityTable.entities[static_cast<unsigned char>(character) & kEntityIndexMask];
  __builtin_memcpy(out, &entity, sizeof entity);
  return out + entity.length;
}

}  // namespace lumisk
