// The keys that close and the arrows mean the same wherever the panel is: on pages, on folders, on
// what has no preview.

#include <cctype>

#include "panel_on_screen.h"
#include "panel_test.h"

namespace lumisk::test {
namespace {

using desktop::SelectionStep;

/// Where the panel is when its web process has ended.
constexpr const char* kCrashPage = "crash page";

class EverywhereTest : public PanelTest, public testing::WithParamInterface<const char*> {
 protected:
  EverywhereTest() {
    for (int i = 0; i < 200; ++i)
      writeAll(items_ / "folder" / ("note " + std::to_string(i) + ".txt"), "x");
    panel_->onSelectionStep = [this](SelectionStep step) { steps_.push_back(step); };
  }

  void goThere() {
    const bool isCrash = GetParam() == std::string(kCrashPage);
    ASSERT_NO_FATAL_FAILURE(open((items_ / (isCrash ? "guide.md" : GetParam())).c_str()));
    if (!isCrash) return;
    webkit_web_view_terminate_web_process(page());
    ASSERT_TRUE(runUntil([&] { return panel_->presentation() == nullptr; }));
    ASSERT_NE(panel_->content(), nullptr);
  }

  ItemsToShow items_;
  std::vector<SelectionStep> steps_;
};

TEST_P(EverywhereTest, KeysThatCloseDo) {
  struct Row {
    const char* keys;
    bool quits;
  };
  for (const Row& row :
       {Row{"space", false}, Row{"Escape", false}, Row{"ctrl+w", false}, Row{"ctrl+q", true}}) {
    SCOPED_TRACE(row.keys);
    closings_ = 0;
    hasQuit_ = false;
    ASSERT_NO_FATAL_FAILURE(goThere());
    press(row.keys);
    EXPECT_TRUE(closes());
    EXPECT_EQ(hasQuit_, row.quits);
    EXPECT_EQ(panel_->presentation(), nullptr) << "what it showed is let go";
    runFor(300);
    EXPECT_TRUE(desktop_.windows().empty()) << "nor is it opened elsewhere";
  }
}

TEST_P(EverywhereTest, ArrowsMoveTheSelection) {
  using enum SelectionStep;
  ASSERT_NO_FATAL_FAILURE(goThere());
  press("Down Up Right Left");
  EXPECT_TRUE(runUntil([&] { return steps_.size() >= 4; }));
  EXPECT_EQ(steps_, (std::vector<SelectionStep>{Down, Up, Right, Left}));
  EXPECT_TRUE(panel_->isVisible());
}

std::vector<const char*> places() {
  std::vector<const char*> all(std::begin(ItemsToShow::kNames), std::end(ItemsToShow::kNames));
  all.push_back(kCrashPage);
  return all;
}

std::string labelOf(const testing::TestParamInfo<const char*>& row) {
  std::string label = row.param;
  for (char& c : label)
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  return label;
}

INSTANTIATE_TEST_SUITE_P(Places, EverywhereTest, testing::ValuesIn(places()), labelOf);

}  // namespace
}  // namespace lumisk::test
