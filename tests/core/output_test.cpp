#include "core/output.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumisk {
namespace {

std::string numberedText(std::size_t size) {
  std::string text;
  for (std::size_t number = 0; text.size() < size; ++number) text += std::to_string(number) + ' ';
  text.resize(size);
  return text;
}

// Sizes around one window, one draft and their multiples.
const std::vector<std::size_t> kSizes = {0,      1,      65535,  65536,  65537,  131072,
                                         200001, 262143, 262144, 262145, 3000000};

TEST(StringOutput, HoldsExactlyWhatWasAppended) {
  for (const std::size_t size : kSizes) {
    const std::string text = numberedText(size);
    StringOutput out(size + 4);
    out.append("<");
    out.append(text);
    out.append(">");
    EXPECT_EQ(out.take(), "<" + text + ">") << size;
  }
}

TEST(StringOutput, HoldsWhatWasWrittenIntoItsRoom) {
  std::string expected;
  StringOutput out(0);
  for (int i = 0; i < 5000; ++i) {
    const std::string part = std::to_string(i);
    char* to = out.room(100);
    ASSERT_GE(out.roomEnd() - to, 100);
    to = std::copy(part.begin(), part.end(), to);
    out.advance(to);
    expected += part;
  }
  EXPECT_EQ(out.take(), expected);
}

TEST(StringOutput, GivesRoomOfTheGreatestSizeAfterAnyFill) {
  for (const std::size_t fill : kSizes) {
    StringOutput out(0);
    out.append(numberedText(fill));
    char* to = out.room(Output::kMaxRoom);
    ASSERT_GE(out.roomEnd() - to, static_cast<std::ptrdiff_t>(Output::kMaxRoom));
    std::fill_n(to, Output::kMaxRoom, 'x');
    out.advance(to + Output::kMaxRoom);
    EXPECT_EQ(out.take(), numberedText(fill) + std::string(Output::kMaxRoom, 'x')) << fill;
  }
}

TEST(DraftOutput, CountsEverythingAndKeepsWhatIsSmall) {
  DraftOutput draft;
  for (const std::size_t size : kSizes) {  // one object again and again, as for records
    const std::string text = numberedText(size);
    draft.restart();
    draft.append(text);
    EXPECT_EQ(draft.size(), size);
    EXPECT_EQ(draft.isComplete(), size <= 256 * 1024) << size;
    if (draft.isComplete()) {
      EXPECT_EQ(draft.text(), text) << size;
    }
  }
}

TEST(DraftOutput, CountsWhatWasWrittenIntoItsRoom) {
  DraftOutput draft;
  for (std::size_t i = 1; i <= 1000; ++i) {
    char* to = draft.room(Output::kMaxRoom);
    std::fill_n(to, 1000, 'x');
    draft.advance(to + 1000);
    ASSERT_EQ(draft.size(), i * 1000);
    if (draft.isComplete()) {
      ASSERT_EQ(draft.text(), std::string(i * 1000, 'x'));
    }
  }
  EXPECT_FALSE(draft.isComplete());
}

}  // namespace
}  // namespace lumisk
