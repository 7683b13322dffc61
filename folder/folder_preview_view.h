#pragma once

#include <functional>

#include "folder/folder_loader.h"
#include "ui/view.h"

namespace lumisk {

/// A folder at a glance: a header with its icon, name and a line of counts, size and date, above
/// the list of its visible entries.
///
///     vstack
///       header          icon, name, subtitle
///       divider
///       list            or a message, while there is nothing to list
class FolderPreviewView {
 public:
  /// Reads nothing yet. `platform` is borrowed, beyond the view's own end: until what it started
  /// has landed.
  FolderPreviewView(FileURL folderURL, const Platform& platform);

  ui::View body() const;
  /// Reads the folder, anew each time.
  void onAppear() { loadFolderContents(state_, platform_); }
  void setOnChange(const std::function<void()>& onChange) { state_.setOnChange(onChange); }

  const FolderState& state() const { return *state_; }

 private:
  ui::View header() const;
  ui::View emptyMessage() const;

  FolderViewState state_;
  std::reference_wrapper<const Platform> platform_;
};

}  // namespace lumisk
