#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/output.h"

namespace lumisk {

/// Collects what is written through windows of the least size, each in an allocation of its own
/// that is gone when the next one comes, so that a sanitizer sees writes past a window and uses of
/// an old one.
class ExactOutput final : public Output {
 public:
  ExactOutput() { renewWindow(); }

  std::string take() {
    flush();
    return text_;
  }

 private:
  Window drain(std::string_view filled) override {
    text_.append(filled);
    renewWindow();
    return {window_.get(), kMaxRoom};
  }

  void renewWindow() {
    window_ = std::make_unique_for_overwrite<char[]>(kMaxRoom);
    setWindow({window_.get(), kMaxRoom});
  }

  std::string text_;
  std::unique_ptr<char[]> window_;
};

}  // namespace lumisk
