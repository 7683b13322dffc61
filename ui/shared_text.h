#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace lumisk::ui {

/// Text that never changes, held once however often it is copied.
///
/// A page or a document may be 200 MB, and a view is built anew after every change of its state; so
/// a view value holds its texts by reference, and two values that share a text are equal without a
/// look at it.
class SharedText {
 public:
  SharedText() = default;
  SharedText(std::string text) : SharedText(std::make_shared<const std::string>(std::move(text))) {}
  SharedText(const char* text) : SharedText(std::string(text)) {}
  /// Text in memory that `owner` keeps: a file's contents are not copied to be shown.
  SharedText(std::shared_ptr<const void> owner, std::string_view text)
      : owner_(std::move(owner)), text_(text) {}

  std::string_view view() const noexcept { return text_; }
  std::size_t size() const noexcept { return text_.size(); }
  bool empty() const noexcept { return text_.empty(); }

  /// The text itself while the caller holds this value or a copy of it.
  const char* data() const noexcept { return text_.data(); }

  bool operator==(const SharedText& other) const noexcept {
    if (text_.size() != other.text_.size()) return false;
    return text_.data() == other.text_.data() || text_ == other.text_;
  }

 private:
  explicit SharedText(const std::shared_ptr<const std::string>& text)
      : owner_(text), text_(*text) {}

  std::shared_ptr<const void> owner_;
  std::string_view text_;
};

}  // namespace lumisk::ui
