#include "folder/folder_loader.h"

#include <sys/stat.h>

#include <algorithm>
#include <thread>
#include <utility>

#include "folder/file_size_text.h"
#include "folder/folder_listing.h"
#include "folder/tree_size.h"

namespace lumisk {
namespace {

void publishFolderDate(const FolderViewState& state, const Platform& platform) {
  struct stat status {};
  if (stat(state->folderURL.path().c_str(), &status) != 0) return;
  platform.mainQueue.async([state, date = status.st_mtim] {
    state.change([&](FolderState& folder) {
      folder.folderDateStr = folder.dateFormatter->stringFromDate(date);
    });
  });
}

// The state travels to the main queue with the text and is let go of there: what it and its host
// hold belongs to the main thread.
void computeFolderSize(FolderViewState state, const std::string& path, MainQueue& mainQueue) {
  const std::size_t threads = std::max(std::thread::hardware_concurrency(), 1U);
  std::string text = formatFileSize(allocatedSizeBelow(path, threads));
  mainQueue.async([state = std::move(state), text = std::move(text)]() mutable {
    state.change([&](FolderState& folder) { folder.folderSizeStr = std::move(text); });
  });
}

void startFolderSize(const FolderViewState& state, const Platform& platform) {
  platform.backgroundQueue.async([state = FolderViewState(state), path = state->folderURL.path(),
                                  &mainQueue = platform.mainQueue]() mutable {
    computeFolderSize(std::move(state), path, mainQueue);
  });
}

void publishListing(const FolderViewState& state, const Platform& platform) {
  auto listing = listFolder(state->folderURL.path(), *state->dateFormatter, platform);
  if (!listing) return;
  auto items = std::make_shared<const FolderItems>(std::move(listing->items));
  platform.mainQueue.async([state, items = std::move(items), hidden = listing->hiddenCount] {
    state.change([&](FolderState& folder) {
      folder.items = items;
      folder.totalCount = static_cast<std::int64_t>(items->count());
      folder.hiddenCount = hidden;
    });
  });
}

}  // namespace

void loadFolderContents(const FolderViewState& state, const Platform& platform) {
  publishFolderDate(state, platform);
  startFolderSize(state, platform);
  publishListing(state, platform);
}

}  // namespace lumisk
