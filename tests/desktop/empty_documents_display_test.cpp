// Documents with nothing in them are shown as such, in every mode.

#include <gmock/gmock.h>

#include "preview_on_screen.h"

namespace lumisk::test {
namespace {

class EmptyDocument : public PreviewTest, public testing::WithParamInterface<const char*> {};

TEST_P(EmptyDocument, IsShownAsTheViewSays) {
  writeAll(folder_ / GetParam(), "");
  Preview preview(folder_ / GetParam());
  EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView()) << "before the load";
  ASSERT_TRUE(preview.finishes());
  EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView()) << "after the load";
  EXPECT_THAT(preview.outlineOfWidgets(), testing::Not(testing::HasSubstr("progress")));
  const bool isTable = std::string(GetParam()) == "empty.csv";
  EXPECT_EQ(evaluate(preview.page(), "document.body.innerText.trim()"),
            isTable ? "Empty file." : "");
  for (const char* const mode : {"source", "text", "formatted", "rendered"}) {
    if (!preview.presentation().selectMode(mode)) continue;
    runFor(300);
    EXPECT_EQ(preview.outlineOfWidgets(), preview.outlineOfView()) << mode;
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, EmptyDocument,
                         testing::Values("empty.md", "empty.json", "empty.jsonl", "empty.csv",
                                         "empty.cpp"),
                         [](const auto& row) { return std::string(row.param).substr(6); });

}  // namespace
}  // namespace lumisk::test
