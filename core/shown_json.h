#pragma once

#include <cstddef>
#include <string_view>

#include "core/output.h"

namespace lumisk {

/// A text as a page shows it that takes it for JSON: laid out, or as it stands when it is no JSON;
/// escaped in both cases. One object serves any number of texts, one after the other, so that a
/// record of a JSON Lines file costs no allocation.
class ShownJson {
 public:
  /// `text` must lie in `surrounding` and live until it is shown.
  void set(std::string_view text, std::string_view surrounding);
  void set(std::string_view text) { set(text, text); }

  /// Size in bytes of what `appendTo` writes.
  std::size_t size() const;
  void appendTo(Output& out) const;

 private:
  std::string_view text_;
  bool isJson_ = false;
  DraftOutput draft_;
};

}  // namespace lumisk
