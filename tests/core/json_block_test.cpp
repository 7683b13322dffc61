#include "core/json_block.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

namespace lumisk::json {
namespace {

template <typename Block>
class JsonBlock : public testing::Test {};

using Blocks = testing::Types<PortableBlock, NativeBlock>;
TYPED_TEST_SUITE(JsonBlock, Blocks);

bool isStringStop(int byte) {
  return byte < 0x20 || byte == '"' || byte == '\\' || byte == '&' || byte == '<' || byte == '>';
}
bool isBlank(int byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; }
bool isDigit(int byte) { return byte >= '0' && byte <= '9'; }

TYPED_TEST(JsonBlock, EveryByteInEveryPlaceIsOfItsKind) {
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t at = 0; at < TypeParam::kSize; ++at) {
      std::array<char, TypeParam::kSize> text;
      text.fill('x');
      text[at] = static_cast<char>(byte);
      const TypeParam block = TypeParam::load(text.data());
      const std::uint32_t all =
          static_cast<std::uint32_t>((std::uint64_t{1} << TypeParam::kSize) - 1);
      const std::uint32_t here = std::uint32_t{1} << at;
      ASSERT_EQ(block.stringStops(), isStringStop(byte) ? here : 0) << byte;
      ASSERT_EQ(block.nonBlanks(), isBlank(byte) ? all ^ here : all) << byte;
      ASSERT_EQ(block.nonDigits(), isDigit(byte) ? all ^ here : all) << byte;
    }
  }
}

TYPED_TEST(JsonBlock, BytesDoNotInfluenceEachOther) {
  std::mt19937 random(3);
  for (int i = 0; i < 100000; ++i) {
    std::array<char, TypeParam::kSize> text;
    for (char& byte : text) byte = static_cast<char>(random() % (i % 2 == 0 ? 256 : 64));
    const TypeParam block = TypeParam::load(text.data());
    for (std::size_t at = 0; at < text.size(); ++at) {
      const int byte = static_cast<unsigned char>(text[at]);
      ASSERT_EQ((block.stringStops() >> at) & 1, isStringStop(byte));
      ASSERT_EQ((block.nonBlanks() >> at) & 1, !isBlank(byte));
      ASSERT_EQ((block.nonDigits() >> at) & 1, !isDigit(byte));
    }
  }
}

TYPED_TEST(JsonBlock, StoresWhatItLoads) {
  const std::string text = "0123456789abcdefghijklmnopqrstuv";
  std::string copy(TypeParam::kSize, ' ');
  TypeParam::load(text.data()).store(copy.data());
  EXPECT_EQ(copy, text.substr(0, TypeParam::kSize));
}

}  // namespace
}  // namespace lumisk::json
