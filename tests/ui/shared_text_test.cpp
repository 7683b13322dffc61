#include "ui/shared_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace lumisk::ui {
namespace {

TEST(SharedText, IsEmptyAtFirst) {
  EXPECT_TRUE(SharedText().empty());
  EXPECT_EQ(SharedText(), SharedText(""));
}

TEST(SharedText, CopiesShareTheirMemory) {
  const SharedText text(std::string(100, 'x'));
  const SharedText copy = text;
  EXPECT_EQ(copy.data(), text.data());
  EXPECT_EQ(copy, text);
}

TEST(SharedText, OutlivesTheValueItWasCopiedFrom) {
  auto first = std::make_unique<SharedText>(std::string(100, 'x'));
  const SharedText copy = *first;
  first.reset();
  EXPECT_EQ(copy.view(), std::string(100, 'x'));
}

TEST(SharedText, IsComparedByItsBytesWhenTheMemoryIsNotTheSame) {
  EXPECT_EQ(SharedText("same"), SharedText("same"));
  EXPECT_NE(SharedText("same"), SharedText("some"));
  EXPECT_NE(SharedText("same"), SharedText("same "));
  EXPECT_NE(SharedText(std::string("a\0b", 3)), SharedText(std::string("a\0c", 3)));
}

TEST(SharedText, KeepsTheOwnerOfItsMemory) {
  auto owner = std::make_shared<const std::string>("beginning and end");
  const std::weak_ptr<const std::string> watched = owner;
  {
    const SharedText part(owner, std::string_view(*owner).substr(0, 9));
    owner.reset();
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(part.view(), "beginning");
  }
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace lumisk::ui
