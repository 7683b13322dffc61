#pragma once

#include <cstddef>
#include <string_view>

namespace lumisk {

class Output;

/// Containers nested deeper than this are no JSON to us: it bounds what hostile input can ask for.
inline constexpr std::size_t kJsonMaxDepth = 512;

/// Writes the JSON document `text` (well-formed UTF-8) laid out with two blanks a level, escaped
/// for HTML as it goes; false when it is no JSON document (RFC 8259, an object or array at the top,
/// one leading byte-order mark allowed), and then what was written means nothing.
///
/// One pass over the text with a stack of one byte a level; no tree, no recursion. Members keep
/// their order and a repeated key is kept each time. Strings are written with the fewest escapes.
/// Integer literals keep their digits. A literal with fraction or exponent becomes the shortest
/// decimal that reads back as the same double; with more than 17 significant digits, or beyond what
/// a double holds, it stays as written, so that no digit of the file is lost.
///
///     {"a":[1.0,"x\/y"],"b":{}}   →   {
///                                       "a" : [
///                                         1,
///                                         "x/y"
///                                       ],
///                                       "b" : {
///
///                                       }
///                                     }
[[nodiscard]] bool appendFormattedJson(Output& out, std::string_view text);

/// The same for a `text` that lies in a longer one, which makes short documents faster: blocks of
/// bytes that reach over the end of `text` may be loaded.
[[nodiscard]] bool appendFormattedJson(Output& out, std::string_view text,
                                       std::string_view surrounding);

}  // namespace lumisk
