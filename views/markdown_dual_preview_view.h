#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "core/file_url.h"
#include "platform/platform.h"
#include "ui/shared_text.h"
#include "ui/view.h"
#include "ui/view_state.h"
#include "views/mode_table.h"

namespace lumisk {

/// Shows a Markdown document as a page, or as the text that it is.
///
/// Both stand in the view all the time, one over the other, and the mode only says which of them is
/// seen; so the web view is never removed, and switching loads nothing. A spinner covers the page
/// until it has been loaded once.
struct MarkdownDualPreviewView {
  enum class PreviewMode { Rendered, Source };

  static constexpr ModeTable<PreviewMode, 2> kModes{{{
      {PreviewMode::Rendered, "preview.mode.rendered", "Preview"},
      {PreviewMode::Source, "preview.mode.source", "Raw Text"},
  }}};

  struct State {
    PreviewMode selectedMode = PreviewMode::Rendered;
    bool isRenderLoaded = false;  ///< whether the page has been loaded once
  };

  /// `page` was built from `source`, the text of a file in `folder`. `stringTable` is borrowed.
  MarkdownDualPreviewView(ui::SharedText source, ui::SharedText page, std::optional<FileURL> folder,
                          const StringTable& stringTable)
      : markdownSource(std::move(source)),
        htmlContent(std::move(page)),
        baseURL(std::move(folder)),
        state(State{}),
        strings(stringTable) {}

  ui::SharedText markdownSource;
  ui::SharedText htmlContent;
  std::optional<FileURL> baseURL;
  ui::ViewState<State> state;
  const StringTable& strings;

  ui::View body() const;
  void setOnChange(const std::function<void()>& onChange) const { state.setOnChange(onChange); }

 private:
  ui::View toolbar() const;
  ui::View renderedLayer() const;
  ui::View sourceLayer() const;
  ui::Opacity opacityOf(PreviewMode mode) const;
  void select(const std::string& rawValue) const;
};

}  // namespace lumisk
