#pragma once

#include <array>

#include "core/output.h"

namespace lumisk {

/// Writes to a file descriptor, which it does not own. After the first failure the rest is dropped.
class DescriptorOutput final : public Output {
 public:
  explicit DescriptorOutput(int descriptor);
  /// 0, or the errno of the write that failed.
  int error() const { return error_; }

 private:
  Window drain(std::string_view filled) override;
  bool takeDirectly(std::string_view text) override;
  void write(std::string_view text);

  int descriptor_;
  int error_ = 0;
  std::array<char, kMaxRoom> window_;
};

}  // namespace lumisk
