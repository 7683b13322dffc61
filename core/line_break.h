#pragma once

#include <cstddef>
#include <string_view>

namespace lumisk {

/// A character that ends a line, or the end of the text (of size 0).
struct LineBreak {
  std::size_t at;
  std::size_t size;

  bool operator==(const LineBreak&) const = default;
};

/// The first line break of `text` (UTF-8) at or after `from`: line feed, vertical tab, form feed,
/// carriage return, U+0085, U+2028 or U+2029, each by itself.
LineBreak findLineBreak(std::string_view text, std::size_t from);

}  // namespace lumisk
