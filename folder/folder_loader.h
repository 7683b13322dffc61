#pragma once

#include "folder/folder_state.h"
#include "platform/platform.h"
#include "ui/view_state.h"

namespace lumisk {

using FolderViewState = ui::ViewState<FolderState>;

/// Reads the folder anew: its date and its entries at once, its size on the background queue. Each
/// of the three reaches the state by a block of its own on the main queue, in any order, and a part
/// that cannot be read leaves its fields as they are. On the main thread only; returns without
/// waiting for the size. `platform` is borrowed until all three have landed; the state may outlive
/// the view.
void loadFolderContents(const FolderViewState& state, const Platform& platform);

}  // namespace lumisk
