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
///       webpage length=2048 digest=5d2c1f8a90e3b764 base="file:///home/ada/"
///
/// Everything that a layout states can be read here: what is not printed has its default, and views
/// that differ in any field have different outlines. Texts up to `kOutlineTextLimit` bytes stand
/// there in full; of longer ones, and of web pages, the length in bytes and a digest stand for the
/// rest. All rows of a list are printed. Callbacks, which compare equal, are stated as present.
std::string outline(const View& view);

inline constexpr std::size_t kOutlineTextLimit = 256;

/// `text` (any bytes) in double quotes on one line. \" \\ \n \r \t; other control characters, line
/// and paragraph separators, marks that reorder a line and the byte-order mark as \u{hex}; bytes
/// that are no UTF-8 as \xhh. Everything else as itself.
std::string inQuotes(std::string_view text);

}  // namespace lumisk::ui
