#include "folder/uuid.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <set>
#include <string>

namespace lumisk {
namespace {

TEST(FolderUuid, TextHasTheUsualForm) {
  Uuid uuid;
  for (std::size_t i = 0; i < 16; ++i) uuid.bytes[i] = static_cast<std::uint8_t>(i * 17);
  EXPECT_EQ(uuid.text(), "00112233-4455-6677-8899-aabbccddeeff");
}

TEST(FolderUuid, EachIsNewAndOfVersionFour) {
  UuidSource first;
  UuidSource second;
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) {
    for (const Uuid& uuid : {first.next(), second.next()}) {
      const std::string text = uuid.text();
      EXPECT_EQ(text[14], '4');
      EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos);
      EXPECT_TRUE(seen.insert(text).second) << text;
    }
  }
}

TEST(FolderUuid, EveryOtherBitVaries) {
  UuidSource source;
  std::array<std::uint8_t, 16> ones{};
  std::array<std::uint8_t, 16> zeros{};
  for (int i = 0; i < 1000; ++i) {
    const Uuid uuid = source.next();
    for (std::size_t byte = 0; byte < 16; ++byte) {
      ones[byte] |= uuid.bytes[byte];
      zeros[byte] |= static_cast<std::uint8_t>(~uuid.bytes[byte]);
    }
  }
  for (std::size_t byte = 0; byte < 16; ++byte) {
    const int fixed = byte == 6 ? 0xF0 : byte == 8 ? 0xC0 : 0;
    EXPECT_EQ(ones[byte] & zeros[byte] & 0xFF, 0xFF & ~fixed) << byte;
  }
}

}  // namespace
}  // namespace lumisk
