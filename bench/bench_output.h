#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "core/output.h"

namespace lumisk::bench {

/// Writes into one large memory that was touched before, so that what is measured is the work and
/// not the first use of a page of memory.
class WarmOutput final : public Output {
 public:
  /// Room for `size` bytes, `size` being the most that will be written.
  explicit WarmOutput(std::size_t size)
      : size_(size + kMaxRoom), memory_(std::make_unique_for_overwrite<char[]>(size_)) {
    std::memset(memory_.get(), 1, size_);
    restart();
  }

  void restart() { setWindow({memory_.get(), size_}); }
  char* memory() { return memory_.get(); }
  /// What was written since `restart`.
  std::string_view written() { return {memory(), static_cast<std::size_t>(room(0) - memory())}; }

 private:
  Window drain(std::string_view) override { std::abort(); }  // the size was wrong

  std::size_t size_;
  std::unique_ptr<char[]> memory_;
};

/// The command's way: one window, reused. What it would send to standard output is dropped.
class StreamedOutput final : public Output {
 public:
  StreamedOutput() : window_(std::make_unique_for_overwrite<char[]>(kMaxRoom)) {
    setWindow({window_.get(), kMaxRoom});
  }
  std::size_t size() const { return size_; }

 private:
  Window drain(std::string_view filled) override {
    size_ += filled.size();
    return {window_.get(), kMaxRoom};
  }

  std::size_t size_ = 0;
  std::unique_ptr<char[]> window_;
};

}  // namespace lumisk::bench
