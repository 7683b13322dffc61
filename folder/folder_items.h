#pragma once

#include <cstddef>
#include <vector>

#include "folder/file_item.h"
#include "ui/view.h"

namespace lumisk {

/// The entries of one listing in the order in which they are shown, and their rows. Shared and
/// never changed, so views that show the same listing compare equal without a look at it.
class FolderItems final : public ui::RowSource {
 public:
  explicit FolderItems(std::vector<FileItem> items) : items_(std::move(items)) {}

  const std::vector<FileItem>& all() const { return items_; }
  bool empty() const { return items_.empty(); }

  std::size_t count() const override { return items_.size(); }
  ui::View row(std::size_t index) const override;

 private:
  std::vector<FileItem> items_;
};

}  // namespace lumisk
