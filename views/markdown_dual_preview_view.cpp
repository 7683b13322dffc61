#include "views/markdown_dual_preview_view.h"

#include <vector>

#include "views/mode_bar.h"
#include "web/html_preview_view.h"

namespace lumisk {

namespace {

constexpr double kSourcePadding = 16;

}  // namespace

ui::View MarkdownDualPreviewView::body() const {
  return underModeBar(toolbar(), ui::Overlay{{renderedLayer(), sourceLayer()}});
}

ui::View MarkdownDualPreviewView::toolbar() const {
  ui::View picker = modePicker(kModes.segments(strings), kModes.rawValue(state->selectedMode),
                               [view = *this](const std::string& tag) { view.select(tag); })
                        .with(ui::FixedSize{});
  return modeBar({ui::Spacer{}, withModePickerPadding(std::move(picker))});
}

ui::View MarkdownDualPreviewView::renderedLayer() const {
  const auto setLoaded = [state = state] {
    if (state->isRenderLoaded) return;
    state.change([](State& record) { record.isRenderLoaded = true; });
  };
  const HTMLPreviewView page{
      .htmlContent = htmlContent, .baseURL = baseURL, .onCheckboxToggle = {}, .onLoad = setLoaded};
  std::vector<ui::View> layers{page.body()};
  if (!state->isRenderLoaded) layers.emplace_back(ui::ProgressIndicator{});
  return ui::View(ui::Overlay{std::move(layers)}).with(opacityOf(PreviewMode::Rendered));
}

ui::View MarkdownDualPreviewView::sourceLayer() const {
  ui::View text = ui::View(ui::Text{.text = markdownSource,
                                    .font = {.size = ui::TextStyle::Body,
                                             .design = ui::FontDesign::Monospaced,
                                             .weight = ui::FontWeight::Default},
                                    .foreground = ui::ForegroundRole::Primary,
                                    .isSelectable = true,
                                    .lineLimit = std::nullopt})
                      .with(ui::Frame{.width = std::nullopt,
                                      .height = std::nullopt,
                                      .maxWidth = ui::kInfinity,
                                      .alignment = ui::HorizontalAlignment::Leading})
                      .with(ui::Padding{ui::Edges::All, kSourcePadding});
  return ui::View(ui::ScrollView{.showsIndicators = true, .content = ui::Content(std::move(text))})
      .with(ui::Background{
          .role = ui::BackgroundRole::Text, .opacity = 1, .extendsUnderSafeAreas = true})
      .with(opacityOf(PreviewMode::Source));
}

ui::Opacity MarkdownDualPreviewView::opacityOf(PreviewMode mode) const {
  return {mode == state->selectedMode ? 1.0 : 0.0};
}

void MarkdownDualPreviewView::select(const std::string& rawValue) const {
  const std::optional<PreviewMode> mode = kModes.fromRawValue(rawValue);
  if (!mode || *mode == state->selectedMode) return;
  state.change([mode](State& record) { record.selectedMode = *mode; });
}

}  // namespace lumisk
