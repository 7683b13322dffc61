#pragma once

#include <memory>

#include "folder/folder_state.h"
#include "platform/platform.h"
#include "ui/view_state.h"

namespace lumisk {

using FolderViewState = ui::ViewState<FolderState>;

/// What the copies of one view share and nobody else has: gone when the last of them is.
struct FolderViewPresence {};

/// Reads the folder anew: its date and its entries at once, its size on the background queue. Each
/// of the three reaches the state by a block of its own on the main queue, in any order, and a part
/// that cannot be read leaves its fields as they are. On the main thread only; returns without
/// waiting for the size. `platform` is borrowed until all three have landed; the state may outlive
/// the view. When the view has gone nobody will see its size, so the walk through a large tree ends
/// early, and the block that lands writes nothing.
void loadFolderContents(const FolderViewState& state, const Platform& platform,
                        const std::weak_ptr<const FolderViewPresence>& view);

}  // namespace lumisk
