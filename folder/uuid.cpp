#include "folder/uuid.h"

#include <sys/random.h>

#include <algorithm>
#include <random>
#include <string_view>

namespace lumisk {
namespace {

void fillWithRandomBytes(std::uint8_t* bytes, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    const ssize_t count = getrandom(bytes + filled, size - filled, 0);
    if (count <= 0) break;
    filled += static_cast<std::size_t>(count);
  }
  // A sandbox may forbid the call; the library then finds another way to the same numbers.
  if (filled == size) return;
  std::random_device device;
  std::generate(bytes + filled, bytes + size, [&] { return static_cast<std::uint8_t>(device()); });
}

}  // namespace

Uuid UuidSource::next() {
  if (at_ == kBufferSize) {
    fillWithRandomBytes(buffer_.data(), kBufferSize);
    at_ = 0;
  }
  Uuid uuid;
  std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(at_), uuid.bytes.size(),
              uuid.bytes.begin());
  at_ += uuid.bytes.size();
  uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);  // version 4
  uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);  // this variant
  return uuid;
}

std::string Uuid::text() const {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text.push_back('-');
    text.push_back(kDigits[bytes[i] >> 4]);
    text.push_back(kDigits[bytes[i] & 0x0FU]);
  }
  return text;
}

}  // namespace lumisk
