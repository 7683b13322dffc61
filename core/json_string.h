#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "core/json_block.h"
#include "core/json_stream.h"

namespace lumisk::json {

/// What becomes of a byte at which the plain part of a string stops, or of an escape of two bytes.
struct StopRule {
  std::array<char, 5> shown;
  std::uint8_t shownSize;
  std::uint8_t size;  ///< bytes it replaces; none when this takes more than a look into a table
};

/// By byte; what follows a backslash is found 256 further on.
inline constexpr std::array<StopRule, 512> kStopRules = [] {
  std::array<StopRule, 512> rules{};
  rules['"'] = {{'"'}, 1, 1};
  rules['&'] = {{'&', 'a', 'm', 'p', ';'}, 5, 1};
  rules['<'] = {{'&', 'l', 't', ';'}, 4, 1};
  rules['>'] = {{'&', 'g', 't', ';'}, 4, 1};
  for (const char letter : {'"', '\\', 'b', 'f', 'n', 'r', 't'}) {
    rules[256 + static_cast<std::size_t>(letter)] = {{'\\', letter}, 2, 2};
  }
  rules[256 + '/'] = {{'/'}, 1, 2};
  return rules;
}();

/// The rule for what stands at `in`; one byte more is read. A table and no branches, because what
/// comes next in a text cannot be predicted.
inline const StopRule& stopRule(const char* in) {
  const auto first = static_cast<unsigned char>(in[0]);
  const std::size_t second = 256U + static_cast<unsigned char>(in[1]);
  return kStopRules[first == '\\' ? second : first];
}

/// Writes the character that an escape "\uXXXX" at `cursor`, or two for a pair of surrogates,
/// stands for. Fails at everything else.
Cursor copyUnicodeEscape(const Stream& stream, Cursor cursor);

/// The rest of a string near the end of the readable memory, where no whole block can be loaded.
Cursor copyStringByBytes(Stream& stream, Cursor cursor);

/// Replaces what stops the plain part of a string at `cursor`; one byte more is readable.
inline Cursor copyStop(const Stream& stream, Cursor cursor) {
  const StopRule& rule = stopRule(cursor.in);
  std::memcpy(cursor.out, rule.shown.data(), rule.shown.size());
  if (rule.size == 0) [[unlikely]]
    return copyUnicodeEscape(stream, cursor);
  return {cursor.in + rule.size, cursor.out + rule.shownSize};
}

/// Copies a block and tells where it has stops.
template <typename Block>
std::uint32_t copyBlock(Cursor cursor) {
  const Block block = Block::load(cursor.in);
  block.store(cursor.out);
  return block.stringStops();
}

/// Writes the string whose opening quote stands at `cursor`, where there is room.
template <typename Block>
Cursor copyString(Stream& stream, Cursor cursor) {
  *cursor.out++ = *cursor.in++;
  while (stream.isReadable(cursor.in)) {
    std::uint32_t stops = copyBlock<Block>(cursor);
    // Branches, not a selection: the next block must not wait for what is in this one.
    if (stops == 0) {
      cursor.in += Block::kSize;
      cursor.out += Block::kSize;
      stops = copyBlock<Block>(cursor);
      if (stops == 0) {
        cursor = stream.withRoom({cursor.in + Block::kSize, cursor.out + Block::kSize});
        continue;
      }
    }
    const int plain = std::countr_zero(stops);
    cursor.in += plain;
    cursor.out += plain;
    if (*cursor.in == '"') {
      *cursor.out++ = '"';
      return cursor.in < stream.end() ? Cursor{cursor.in + 1, cursor.out} : kFailed;
    }
    cursor = stream.withRoom(copyStop(stream, cursor));
    if (cursor.failed()) return kFailed;
  }
  return copyStringByBytes(stream, cursor);
}

}  // namespace lumisk::json
