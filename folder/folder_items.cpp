#include "folder/folder_items.h"

#include <optional>

namespace lumisk {
namespace {

constexpr double kRowSpacing = 10;
constexpr double kRowPadding = 1;
constexpr double kIconLength = 20;
constexpr double kNameFontSize = 13;
constexpr double kDetailFontSize = 12;
constexpr double kSizeWidth = 80;
constexpr double kDateWidth = 130;

ui::View iconView(const Icon& icon) {
  return ui::View(ui::Image{.source = ui::NamedIcon{icon.name}, .isResizable = true})
      .with(ui::Frame{.width = kIconLength, .height = kIconLength, .maxWidth = std::nullopt});
}

/// A column of one width, its text against the trailing edge.
ui::View columnView(const std::string& text, ui::FontDesign design, double width) {
  return ui::View(ui::Text{.text = text,
                           .font = {.size = kDetailFontSize, .design = design},
                           .foreground = ui::ForegroundRole::Secondary,
                           .lineLimit = std::nullopt})
      .with(ui::Frame{.width = width,
                      .height = std::nullopt,
                      .maxWidth = std::nullopt,
                      .alignment = ui::HorizontalAlignment::Trailing});
}

}  // namespace

ui::View FolderItems::row(std::size_t index) const {
  const FileItem& item = items_[index];
  return ui::View(
             ui::HStack{.spacing = kRowSpacing,
                        .children = {iconView(item.icon),
                                     ui::Text{.text = item.name,
                                              .font = {.size = kNameFontSize},
                                              .lineLimit = 1},
                                     ui::Spacer{.minLength = 0},
                                     columnView(item.size, ui::FontDesign::Monospaced, kSizeWidth),
                                     columnView(item.date, ui::FontDesign::Default, kDateWidth)}})
      .with(ui::Padding{.edges = ui::Edges::Vertical, .length = kRowPadding});
}

}  // namespace lumisk
