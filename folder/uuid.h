#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace lumisk {

/// A universally unique identifier (RFC 9562).
struct Uuid {
  std::array<std::uint8_t, 16> bytes{};

  /// "f81d4fae-7dec-41d0-a765-00a0c91e6bf6".
  std::string text() const;

  bool operator==(const Uuid&) const = default;
};

/// Makes random identifiers (version 4), with the system's random numbers fetched many at a time.
class UuidSource {
 public:
  Uuid next();

 private:
  static constexpr std::size_t kBufferSize = 4096;  // of whole identifiers

  std::array<std::uint8_t, kBufferSize> buffer_{};
  std::size_t at_ = kBufferSize;
};

}  // namespace lumisk
