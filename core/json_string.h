#pragma once

#include <bit>
#include <cstring>

#include "core/json_block.h"
#include "core/json_stream.h"

namespace lumisk::json {

/// Writes the JSON form of what stands at `cursor`, a byte at which the plain part of a string
/// stops and which is not its end: an entity for & < >, the shortest form of an escape. Fails at a
/// control character and at an escape that is malformed or half of a surrogate pair.
Cursor copySpecial(const Stream& stream, Cursor cursor);

/// The rest of a string near the end of the readable memory, where no whole block can be loaded.
Cursor copyStringByBytes(Stream& stream, Cursor cursor);

/// Writes the string whose opening quote stands at `cursor`.
template <typename Block>
Cursor copyString(Stream& stream, Cursor cursor) {
  *cursor.out++ = *cursor.in++;
  while (!cursor.failed()) {
    cursor = stream.withRoom(cursor);
    if (!stream.isReadable(cursor.in, Block::kSize)) return copyStringByBytes(stream, cursor);
    const Block block = Block::load(cursor.in);
    block.store(cursor.out);
    const std::uint32_t stops = block.stringStops();
    const std::size_t plain = stops == 0 ? Block::kSize : std::countr_zero(stops);
    cursor.in += plain;
    cursor.out += plain;
    if (stops == 0) continue;
    if (*cursor.in == '"') {
      *cursor.out++ = '"';
      return cursor.in < stream.end() ? Cursor{cursor.in + 1, cursor.out} : kFailed;
    }
    cursor = copySpecial(stream, cursor);
  }
  return kFailed;
}

}  // namespace lumisk::json
