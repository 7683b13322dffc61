#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace lumisk {

/// A copy of a text that ends where its allocation ends, `offset` bytes into it: the sanitizer sees
/// the first byte that is read or written too far.
class ExactCopy {
 public:
  explicit ExactCopy(std::string_view text, std::size_t offset = 0)
      : memory_(std::make_unique_for_overwrite<char[]>(offset + text.size())),
        text_(memory_.get() + offset, text.size()) {
    std::fill_n(memory_.get(), offset, '<');
    std::copy(text.begin(), text.end(), memory_.get() + offset);
  }

  std::string_view text() const { return text_; }
  const char* begin() const { return text_.data(); }
  const char* end() const { return text_.data() + text_.size(); }

 private:
  std::unique_ptr<char[]> memory_;
  std::string_view text_;
};

}  // namespace lumisk
