#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace lumisk {

class Output;

// The fixed text of the pages stands in real files (core/pages/), which the build embeds as lists
// of pieces: literal text, and slots that are filled when a page is built.

enum class PieceKind { Literal, Slot };

struct TemplatePiece {
  PieceKind kind;
  std::string_view text;  ///< the literal itself, or the slot's name
};

/// Text for each slot that depends on the appearance alone.
struct Palette {
  std::string_view text;
  std::string_view pageBackground;
  std::string_view codeBackground;
  std::string_view quoteText;
  std::string_view rule;
  std::string_view zebraRow;
  std::string_view accent;
  std::string_view carouselBorder;
  std::string_view carouselDot;
  std::string_view codeTheme;     ///< the end of the highlighting style sheet's name
  std::string_view diagramTheme;  ///< the diagram library's word for it

  static const Palette& of(bool isDark);
};

}  // namespace lumisk
