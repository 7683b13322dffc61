#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "ui/view.h"

namespace lumisk::test {

/// Rows that are there already.
class VectorRowSource final : public ui::RowSource {
 public:
  explicit VectorRowSource(std::vector<ui::View> rows) : rows_(std::move(rows)) {}
  std::size_t count() const override { return rows_.size(); }
  ui::View row(std::size_t index) const override { return rows_.at(index); }

 private:
  std::vector<ui::View> rows_;
};

}  // namespace lumisk::test
