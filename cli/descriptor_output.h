#pragma once

#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <vector>

#include "core/output.h"

namespace lumisk {

/// Writes to a file descriptor, which it does not own. After the first failure the rest is dropped.
class DescriptorOutput final : public Output {
 public:
  explicit DescriptorOutput(int descriptor);
  /// 0, or the errno of the write that failed.
  int error() const { return error_; }

  /// Holds the trial in memory. Large blocks are asked for in huge pages: so holding a page costs
  /// less than making it twice.
  bool beginTrial() override;
  void endTrial(bool isWanted) override;

 private:
  Window drain(std::string_view filled) override;
  bool takeDirectly(std::string_view text) override;
  void write(std::string_view text);
  Window addBlock();

  struct Free {
    void operator()(char* memory) const { std::free(memory); }
  };
  struct Block {
    std::unique_ptr<char, Free> memory;
    std::size_t used = 0;
  };

  std::vector<Block> trial_;  // empty when there is none
  int descriptor_;
  int error_ = 0;
  std::array<char, kMaxRoom> window_;
};

}  // namespace lumisk
