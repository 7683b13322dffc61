#include "extension/preview_view_controller.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <type_traits>

#include "support/files.h"
#include "support/recording_platform.h"
#include "ui/outline.h"

namespace lumisk {
namespace {

using test::RecordingPlatform;
using test::TemporaryFolder;
using test::writeAll;

struct Named {
  std::string name;
  ui::View body() const { return ui::Text{.text = name}; }
};

class Controller : public testing::Test {
 protected:
  FileURL urlOf(std::string_view name) { return FileURL::fromPath((folder_ / name).string()); }
  // How often the host was answered.
  int prepare(std::string_view name) {
    int answers = 0;
    controller_.preparePreviewOfFile(urlOf(name), [&](const auto& error) {
      ++answers;
      error_ = error;
    });
    return answers;
  }

  TemporaryFolder folder_;
  RecordingPlatform desktop_;
  PreviewViewController controller_{desktop_.platform()};
  std::optional<ErrorRecord> error_;
};

TEST_F(Controller, StartsAsAnEmptySurfaceOfTheWindowsColour) {
  EXPECT_EQ(controller_.rootSurface().background, ui::BackgroundRole::Window);
  EXPECT_TRUE(controller_.children().empty());
}

TEST_F(Controller, AnEmbeddedViewFillsTheSurface) {
  controller_.embed(ui::HostedView(Named{"only"}));
  ASSERT_EQ(controller_.children().size(), 1U);
  const auto& constraints = controller_.children()[0]->constraints;
  ASSERT_EQ(constraints.size(), 4U);
  EXPECT_EQ(constraints[0], (EdgeConstraint{Anchor::Leading, Anchor::Leading, 0}));
  EXPECT_EQ(constraints[1], (EdgeConstraint{Anchor::Trailing, Anchor::Trailing, 0}));
  EXPECT_EQ(constraints[2], (EdgeConstraint{Anchor::Top, Anchor::Top, 0}));
  EXPECT_EQ(constraints[3], (EdgeConstraint{Anchor::Bottom, Anchor::Bottom, 0}));
}

TEST_F(Controller, LaterViewsLieOnTopOfEarlierOnes) {
  controller_.embed(ui::HostedView(Named{"first"}));
  const HostedChild* const first = controller_.children()[0].get();
  controller_.embed(ui::HostedView(Named{"second"}));
  ASSERT_EQ(controller_.children().size(), 2U);
  EXPECT_EQ(controller_.children()[0].get(), first);
  EXPECT_EQ(ui::outline(controller_.children()[0]->view.body()), "text \"first\"\n");
  EXPECT_EQ(ui::outline(controller_.children()[1]->view.body()), "text \"second\"\n");
}

TEST_F(Controller, AnswersEachRequestExactlyOnceBeforeItReturns) {
  writeAll(folder_ / "a.md", "# x");
  writeAll(folder_ / "no text.md", "\xFF");
  std::filesystem::create_directory(folder_ / "folder");
  EXPECT_EQ(prepare("a.md"), 1);
  EXPECT_FALSE(error_);
  EXPECT_EQ(prepare("no text.md"), 1);
  EXPECT_TRUE(error_);
  EXPECT_EQ(prepare("missing"), 1);
  EXPECT_TRUE(error_);
  EXPECT_EQ(prepare("folder"), 1);
  EXPECT_FALSE(error_);
}

TEST_F(Controller, AfterAFailureThereIsNothingOnTheSurface) {
  prepare("missing.md");
  EXPECT_TRUE(controller_.children().empty());
}

TEST_F(Controller, ASecondRequestStacksASecondView) {
  writeAll(folder_ / "a.md", "# x");
  writeAll(folder_ / "b.json", "{}");
  prepare("a.md");
  const HostedChild* const first = controller_.children()[0].get();
  prepare("b.json");
  ASSERT_EQ(controller_.children().size(), 2U);
  EXPECT_EQ(controller_.children()[0].get(), first);
}

TEST_F(Controller, AFailedRequestKeepsTheViewThatIsThere) {
  writeAll(folder_ / "a.md", "# x");
  prepare("a.md");
  const std::string before = ui::outline(controller_.children()[0]->view.body());
  prepare("missing.md");
  ASSERT_EQ(controller_.children().size(), 1U);
  EXPECT_EQ(ui::outline(controller_.children()[0]->view.body()), before);
}

TEST_F(Controller, AFolderFillsAfterItHasAppeared) {
  std::filesystem::create_directory(folder_ / "folder");
  writeAll(folder_ / "folder" / "one", "1");
  prepare("folder");
  ui::HostedView& view = controller_.children()[0]->view;
  EXPECT_EQ(ui::outline(view.body()).find("\"one\""), std::string::npos);
  view.onAppear();
  desktop_.settle();
  EXPECT_NE(ui::outline(view.body()).find("\"one\""), std::string::npos);
}

TEST_F(Controller, AViewThatHasGoneIsNotReachedByWhatItStarted) {
  std::filesystem::create_directory(folder_ / "folder");
  {
    PreviewViewController passing(desktop_.platform());
    passing.preparePreviewOfFile(urlOf("folder"), [](const auto&) {});
    ui::HostedView& view = passing.children()[0]->view;
    view.setOnChange([] { FAIL() << "nobody shows it any more"; });
    // Appearing only queues; what it queues lands after the view has gone.
    view.onAppear();
  }
  desktop_.settle();
}

}  // namespace
}  // namespace lumisk
