#include "views/json_dual_preview_view.h"

#include "core/json_page.h"
#include "views/mode_bar.h"
#include "web/html_preview_view.h"

namespace lumisk {

namespace {

// The builder drops the last component of a file's URL to get the folder; any name will do.
constexpr const char* kFileName = "dummy.json";

}  // namespace

ui::View JSONDualPreviewView::body() const {
  ui::View picker = modePicker(kModes.segments(strings), kModes.rawValue(state->selectedMode),
                               [view = *this](const std::string& tag) { view.select(tag); });
  const HTMLPreviewView page{
      .htmlContent = state->renderedHTML, .baseURL = baseURL, .onCheckboxToggle = {}, .onLoad = {}};
  return underModeBar(modeBar({withModePickerPadding(std::move(picker))}), page.body());
}

void JSONDualPreviewView::onAppear() const {
  state.change([this](State& record) { render(record); });
}

void JSONDualPreviewView::select(const std::string& rawValue) const {
  const std::optional<PreviewMode> mode = kModes.fromRawValue(rawValue);
  if (!mode || *mode == state->selectedMode) return;
  state.change([this, mode](State& record) {
    record.selectedMode = *mode;
    render(record);
  });
}

void JSONDualPreviewView::render(State& record) const {
  if (!baseURL) return;
  record.renderedHTML = buildJSONHTML(jsonSource.view(), baseURL->appendingPathComponent(kFileName),
                                      isDark, record.selectedMode == PreviewMode::Formatted);
}

}  // namespace lumisk
