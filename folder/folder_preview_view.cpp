#include "folder/folder_preview_view.h"

#include <optional>
#include <utility>

#include "folder/folder_subtitle.h"

namespace lumisk {
namespace {

constexpr double kHeaderPadding = 12;
constexpr double kHeaderIconLength = 32;
constexpr double kTitleSpacing = 2;

ui::View iconView(const FileURL& folder) {
  return ui::View(ui::Image{.source = ui::FileIcon{folder.path()}, .isResizable = true})
      .with(ui::Frame{
          .width = kHeaderIconLength, .height = kHeaderIconLength, .maxWidth = std::nullopt});
}

ui::View titleView(std::string name, std::string subtitle) {
  return ui::VStack{.alignment = ui::HorizontalAlignment::Leading,
                    .spacing = kTitleSpacing,
                    .children = {ui::Text{.text = std::move(name),
                                          .font = {.size = ui::TextStyle::Headline},
                                          .lineLimit = std::nullopt},
                                 ui::Text{.text = std::move(subtitle),
                                          .font = {.size = ui::TextStyle::Caption},
                                          .foreground = ui::ForegroundRole::Secondary,
                                          .lineLimit = std::nullopt}}};
}

}  // namespace

FolderPreviewView::FolderPreviewView(FileURL folderURL, const Platform& platform)
    : state_(FolderState{.folderURL = std::move(folderURL),
                         .dateFormatter = platform.makeDateFormatter()}),
      platform_(platform) {}

ui::View FolderPreviewView::header() const {
  return ui::View(ui::HStack{
                      .spacing = std::nullopt,
                      .children = {iconView(state_->folderURL),
                                   titleView(state_->folderURL.lastPathComponent(),
                                             buildFolderSubtitle(*state_, platform_.get().strings)),
                                   ui::Spacer{.minLength = 0}}})
      .with(ui::Padding{.length = kHeaderPadding})
      .with(ui::Background{.role = ui::BackgroundRole::Window, .extendsUnderSafeAreas = true});
}

ui::View FolderPreviewView::emptyMessage() const {
  constexpr const char* kKey = "folder.empty";
  return ui::HStack{.spacing = std::nullopt,
                    .children = {ui::Spacer{},
                                 ui::Text{.text = platform_.get().strings.text(kKey).value_or(kKey),
                                          .font = {},
                                          .foreground = ui::ForegroundRole::Secondary,
                                          .lineLimit = std::nullopt},
                                 ui::Spacer{}}};
}

ui::View FolderPreviewView::body() const {
  ui::View content = state_->items->empty() ? emptyMessage() : ui::View(ui::List{state_->items});
  return ui::VStack{.alignment = ui::HorizontalAlignment::Leading,
                    .spacing = 0,
                    .children = {header(), ui::Divider{}, std::move(content)}};
}

}  // namespace lumisk
