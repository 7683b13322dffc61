#pragma once

#include <unistd.h>

#include <utility>

namespace lumisk {

/// A file descriptor that closes itself. Negative when there is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  /// Hands the descriptor over to the caller.
  int release() { return std::exchange(number_, -1); }

 private:
  int number_ = -1;
};

}  // namespace lumisk
