#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "ui/view.h"

namespace lumisk {

/// The modes of a view in the order of their segments.
///
/// A mode's raw value is its name for others: the tag of its segment and the key of its title in
/// the string table. The fallback title holds where the table has no text for the key.
template <typename Mode, std::size_t kCount>
struct ModeTable {
  struct Row {
    Mode mode;
    std::string_view rawValue;
    std::string_view fallbackTitle;
  };
  std::array<Row, kCount> rows;

  constexpr std::string_view rawValue(Mode mode) const { return row(mode).rawValue; }

  /// The mode with this raw value, if there is one.
  constexpr std::optional<Mode> fromRawValue(std::string_view rawValue) const {
    for (const Row& row : rows) {
      if (row.rawValue == rawValue) return row.mode;
    }
    return std::nullopt;
  }

  std::string title(Mode mode, const StringTable& strings) const {
    const Row& found = row(mode);
    return strings.text(found.rawValue).value_or(std::string(found.fallbackTitle));
  }

  std::vector<ui::Segment> segments(const StringTable& strings) const {
    std::vector<ui::Segment> segments;
    for (const Row& row : rows) {
      segments.push_back({std::string(row.rawValue), title(row.mode, strings)});
    }
    return segments;
  }

 private:
  constexpr const Row& row(Mode mode) const {
    for (const Row& row : rows) {
      if (row.mode == mode) return row;
    }
    return rows.front();  // every mode has a row
  }
};

}  // namespace lumisk
