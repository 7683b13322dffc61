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

/// Shows a JSON file as a page in one of two modes: laid out, or as the text
/// that it is. The page is built anew when the view appears and whenever the mode changes. What is
/// no JSON is shown as its own text in both modes.
struct JSONDualPreviewView {
  enum class PreviewMode { Formatted, Text };

  static constexpr ModeTable<PreviewMode, 2> kModes{{{
      {PreviewMode::Formatted, "preview.mode.formatted", "Formatted"},
      {PreviewMode::Text, "preview.mode.source", "Raw Text"},
  }}};

  struct State {
    PreviewMode selectedMode;
    ui::SharedText renderedHTML;  ///< the last page built
  };

  /// `folder` is the file's; without one no page is ever built. `stringTable` is borrowed.
  JSONDualPreviewView(ui::SharedText source, std::optional<FileURL> folder, bool isDarkAppearance,
                      PreviewMode initialMode, const StringTable& stringTable)
      : jsonSource(std::move(source)),
        baseURL(std::move(folder)),
        isDark(isDarkAppearance),
        state(State{initialMode, {}}),
        strings(stringTable) {}

  ui::SharedText jsonSource;
  std::optional<FileURL> baseURL;
  bool isDark;  ///< the appearance for which the view was made
  ui::ViewState<State> state;
  const StringTable& strings;

  ui::View body() const;
  void onAppear() const;
  void setOnChange(const std::function<void()>& onChange) const { state.setOnChange(onChange); }

 private:
  void select(const std::string& rawValue) const;
  void render(State& record) const;
};

}  // namespace lumisk
