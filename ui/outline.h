#pragma once

#include <string>
#include <string_view>

namespace lumisk::ui {

struct View;

/// `view` as text, always the same for equal views: one node a line, two blanks a level; the kind,
/// then what differs from the default in the order of the fields, then the modifiers from the
/// innermost on.
///
///     vstack alignment=leading spacing=0
///       hstack padding=12 background(window safe-areas)
///         image file="/home/ada/Notes" resizable frame(width=32 height=32)
///         text "Notes" font=headline
///         spacer
///       divider
///       webpage length=2048 base="file:///home/ada/"
///
/// Texts up to `kOutlineTextLimit` bytes stand there in full; of longer ones a beginning and the
/// length in bytes. Web pages are stated by length and base. All rows of a list are printed.
std::string outline(const View& view);

inline constexpr std::size_t kOutlineTextLimit = 256;

/// `text` (any bytes) in double quotes on one line. \" \\ \n \r \t; other control characters, line
/// and paragraph separators, marks that reorder a line and the byte-order mark as \u{hex}; bytes
/// that are no UTF-8 as \xhh. Everything else as itself.
std::string inQuotes(std::string_view text);

}  // namespace lumisk::ui
