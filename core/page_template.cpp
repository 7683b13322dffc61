#include "core/page_template.h"

#include <span>
#include <stdexcept>

#include "core/output.h"

namespace lumisk {

const std::string_view kCdnHost = LUMISK_CDN_HOST;

namespace {

constexpr Palette kLight = {
    .text = "#24292e",
    .pageBackground = "#ffffff",
    .codeBackground = "#f6f8fa",
    .quoteText = "#6a737d",
    .rule = "#dfe2e5",
    .zebraRow = "#f6f8fa",
    .accent = "#0066cc",
    .carouselBorder = "rgba(0,0,0,0.1)",
    .carouselDot = "rgba(0,0,0,0.3)",
    .codeTheme = "light",
    .diagramTheme = "default",
};

// The accent keeps its colour in the dark.
constexpr Palette kDark = {
    .text = "#E6E6E6",
    .pageBackground = "#1e1e1e",
    .codeBackground = "#2d2d2d",
    .quoteText = "#8b949e",
    .rule = "#444",
    .zebraRow = "#2a2a2a",
    .accent = "#0066cc",
    .carouselBorder = "rgba(255,255,255,0.1)",
    .carouselDot = "rgba(255,255,255,0.3)",
    .codeTheme = "dark",
    .diagramTheme = "dark",
};

using PaletteMember = std::string_view Palette::*;

struct PaletteSlot {
  std::string_view name;
  PaletteMember member;
};

constexpr PaletteSlot kPaletteSlots[] = {
    {"text", &Palette::text},
    {"page-background", &Palette::pageBackground},
    {"code-background", &Palette::codeBackground},
    {"quote-text", &Palette::quoteText},
    {"rule", &Palette::rule},
    {"zebra-row", &Palette::zebraRow},
    {"accent", &Palette::accent},
    {"carousel-border", &Palette::carouselBorder},
    {"carousel-dot", &Palette::carouselDot},
    {"code-theme", &Palette::codeTheme},
    {"diagram-theme", &Palette::diagramTheme},
};

enum class PieceKind { Literal, Color, BaseHref, CdnHost, Source, Include };

struct Piece {
  PieceKind kind;
  std::string_view text = {};            // of a literal
  PaletteMember color = nullptr;         // of a palette slot
  std::span<const Piece> included = {};  // of another file in its place
};

consteval Piece literal(std::string_view text) {
  return {.kind = PieceKind::Literal, .text = text};
}

consteval Piece paletteSlot(std::string_view name) {
  for (const PaletteSlot& slot : kPaletteSlots) {
    if (slot.name == name) return {.kind = PieceKind::Color, .color = slot.member};
  }
  throw std::invalid_argument("a page names a slot that does not exist");
}

// The files that stand in others have palette slots only.
#define LUMISK_SLOT(name) paletteSlot(name)
constexpr Piece kDocumentStyle[] = {
#include "embedded/document_css.inc"
};
constexpr Piece kMarkdownStyle[] = {
#include "embedded/markdown_page_css.inc"
};
constexpr Piece kMarkdownScript[] = {
#include "embedded/markdown_page_js.inc"
};
#undef LUMISK_SLOT

consteval Piece pageSlot(std::string_view name) {
  if (name == "base-href") return {.kind = PieceKind::BaseHref};
  if (name == "cdn-host") return {.kind = PieceKind::CdnHost};
  if (name == "source") return {.kind = PieceKind::Source};
  if (name == "document-css") return {.kind = PieceKind::Include, .included = kDocumentStyle};
  if (name == "markdown-css") return {.kind = PieceKind::Include, .included = kMarkdownStyle};
  if (name == "client-script") return {.kind = PieceKind::Include, .included = kMarkdownScript};
  return paletteSlot(name);
}

#define LUMISK_SLOT(name) pageSlot(name)
constexpr Piece kCodePageStart[] = {
#include "embedded/code_page_start_html.inc"
};
constexpr Piece kCodePageEnd[] = {
#include "embedded/code_page_end_html.inc"
};
constexpr Piece kMarkdownPage[] = {
#include "embedded/markdown_page_html.inc"
};
#undef LUMISK_SLOT

std::span<const Piece> piecesOf(PageTemplate page) {
  switch (page) {
    case PageTemplate::CodePageStart:
      return kCodePageStart;
    case PageTemplate::CodePageEnd:
      return kCodePageEnd;
    case PageTemplate::MarkdownPage:
      return kMarkdownPage;
  }
  return {};
}

// Calls `append` with each stretch of text in order. Included files include nothing themselves.
template <typename Append>
void expand(std::span<const Piece> pieces, const PageSlots& slots, const Append& append) {
  for (const Piece& piece : pieces) {
    switch (piece.kind) {
      case PieceKind::Literal:
        append(piece.text);
        break;
      case PieceKind::Color:
        append(slots.palette.*piece.color);
        break;
      case PieceKind::BaseHref:
        append(slots.baseHref);
        break;
      case PieceKind::CdnHost:
        append(kCdnHost);
        break;
      case PieceKind::Source:
        append(slots.source);
        break;
      case PieceKind::Include:
        expand(piece.included, slots, append);
        break;
    }
  }
}

}  // namespace

const Palette& Palette::of(bool isDark) { return isDark ? kDark : kLight; }

void appendPageTemplate(Output& out, PageTemplate page, const PageSlots& slots) {
  expand(piecesOf(page), slots, [&](std::string_view text) { out.append(text); });
}

std::size_t pageTemplateSize(PageTemplate page, const PageSlots& slots) {
  std::size_t size = 0;
  expand(piecesOf(page), slots, [&](std::string_view text) { size += text.size(); });
  return size;
}

}  // namespace lumisk
