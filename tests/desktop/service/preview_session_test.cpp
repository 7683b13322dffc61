#include "desktop/service/preview_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_preview_host.h"
#include "main_loop.h"

namespace lumisk::desktop {
namespace {

using test::FakePreviewHost;
using testing::ElementsAre;
using testing::IsEmpty;

/// Answers at once, or when the test says so.
class FakeResolver final : public ItemResolver {
 public:
  void resolve(const std::string& uri, std::function<void(ItemOrReason)> found) override {
    asked.push_back(uri);
    if (isSlow) {
      waiting = std::move(found);
    } else {
      found(FileURL::fromString(uri).value());
    }
  }
  void cancel() override { waiting = nullptr; }

  bool isSlow = false;
  std::vector<std::string> asked;
  std::function<void(ItemOrReason)> waiting;
};

class PreviewSessionTest : public testing::Test {
 protected:
  void call(const std::string& uri, bool closeIfAlreadyShown) {
    session_.showFile({.uri = uri, .closeIfAlreadyShown = closeIfAlreadyShown});
  }
  void callAndWait(const std::string& uri, bool closeIfAlreadyShown) {
    call(uri, closeIfAlreadyShown);
    test::runPending();
  }

  FakePreviewHost host_;
  FakeResolver resolver_;
  std::int64_t now_ = 0;  // milliseconds
  PreviewSession session_{host_, resolver_, [this] { return now_; }};
};

constexpr const char* kA = "file:///folder/a.md";
constexpr const char* kB = "file:///folder/b.md";
constexpr const char* kC = "file:///folder/c.md";

TEST_F(PreviewSessionTest, PassesOnAllThatTheCallSays) {
  session_.showFile({.uri = kA, .parentHandle = "x11:3a", .activationToken = "token"});
  EXPECT_THAT(host_.shown, IsEmpty()) << "the caller is answered first";
  EXPECT_TRUE(session_.isBusy());
  test::runPending();
  ASSERT_EQ(host_.shown.size(), 1u);
  EXPECT_EQ(host_.shown[0].uri, kA);
  EXPECT_EQ(std::get<FileURL>(host_.shown[0].item), FileURL::fromPath("/folder/a.md"));
  EXPECT_EQ(host_.shown[0].parentHandle, "x11:3a");
  EXPECT_EQ(host_.shown[0].activationToken, "token");
}

TEST_F(PreviewSessionTest, SpaceTwiceOpensAndCloses) {
  for (int round = 0; round < 3; ++round) {
    callAndWait(kA, true);
    EXPECT_TRUE(host_.isVisible());
    callAndWait(kA, true);
    EXPECT_FALSE(host_.isVisible());
  }
  EXPECT_THAT(host_.shownUris(), ElementsAre(kA, kA, kA));
}

TEST_F(PreviewSessionTest, TheSameFileWithoutClosingIsNothing) {
  callAndWait(kA, true);
  callAndWait(kA, false);
  EXPECT_TRUE(host_.isVisible());
  EXPECT_THAT(host_.shownUris(), ElementsAre(kA));
}

TEST_F(PreviewSessionTest, AnotherFileUsesTheWindowAgain) {
  callAndWait(kA, true);
  callAndWait(kB, false);
  callAndWait(kC, true);
  EXPECT_THAT(host_.shownUris(), ElementsAre(kA, kB, kC));
  EXPECT_EQ(host_.closeCount, 0);
}

TEST_F(PreviewSessionTest, AFileIsTheSameHoweverItIsWritten) {
  callAndWait("file:///folder/a%20b", true);
  callAndWait("file:///folder/a b", false);
  callAndWait("file://localhost/folder/./a%20b/", false);
  EXPECT_EQ(host_.shown.size(), 1u);
  callAndWait("file:/folder/a%20b", true);
  EXPECT_FALSE(host_.isVisible());
}

TEST_F(PreviewSessionTest, AfterThePersonClosedItTheSameFileOpensAgain) {
  callAndWait(kA, true);
  host_.closeByPerson();
  callAndWait(kA, true);
  EXPECT_TRUE(host_.isVisible());
}

TEST_F(PreviewSessionTest, WhatThePersonClosedStaysClosedWhileAnItemIsLookedUp) {
  callAndWait(kA, true);
  resolver_.isSlow = true;
  callAndWait(kB, false);
  host_.closeByPerson();
  EXPECT_FALSE(resolver_.waiting) << "nobody waits for it any more";
  EXPECT_FALSE(session_.isBusy());
}

TEST_F(PreviewSessionTest, WhatThePersonClosedStaysClosedInTheTurnBeforeACall) {
  callAndWait(kA, true);
  call(kB, false);
  host_.closeByPerson();
  test::runPending();
  EXPECT_FALSE(host_.isVisible());
  EXPECT_THAT(host_.shownUris(), ElementsAre(kA));
}

TEST_F(PreviewSessionTest, ASelectionThatWasUnderWayDoesNotReopenIt) {
  enum class Closing { ByPerson, BySpace, ByCaller };
  struct Row {
    const char* label;
    ShowCall call;
    std::int64_t after;  // milliseconds
    Closing closing;
    bool isShown;
    const char* parent = "x11:3a";
  };
  using enum Closing;
  const ShowCall selection = {.uri = kB, .parentHandle = "x11:3a"};
  const ShowCall space = {.uri = kB, .parentHandle = "x11:3a", .closeIfAlreadyShown = true};
  const ShowCall elsewhere = {.uri = kB, .parentHandle = "x11:3b"};
  const Row rows[] = {
      {"under way", selection, 0, ByPerson, false},
      {"a slow one", selection, 299, ByPerson, false},
      {"a new one", selection, 300, ByPerson, true},
      {"Space", space, 0, ByPerson, true},
      {"another window's", elsewhere, 0, ByPerson, true},
      {"under way after Space", selection, 0, BySpace, false},
      {"a slow one after Space", selection, 299, BySpace, false},
      {"a new one after Space", selection, 300, BySpace, true},
      {"Space after Space", space, 0, BySpace, true},
      {"another window's after Space", elsewhere, 0, BySpace, true},
      {"a script's after its own", {.uri = kB}, 0, BySpace, true, ""},
      {"after the caller's own Close", selection, 0, ByCaller, true},
  };
  for (const Row& row : rows) {
    const ShowCall opening = {.uri = kA, .parentHandle = row.parent, .closeIfAlreadyShown = true};
    session_.showFile(opening);
    test::runPending();
    if (row.closing == ByPerson) host_.closeByPerson();
    if (row.closing == BySpace) session_.showFile(opening);
    if (row.closing == ByCaller) session_.close();
    ASSERT_FALSE(host_.isVisible()) << row.label;
    now_ += row.after;
    session_.showFile(row.call);
    test::runPending();
    EXPECT_EQ(host_.isVisible(), row.isShown) << row.label;
    session_.close();
    now_ += 60'000;
  }
}

TEST_F(PreviewSessionTest, OfManyWaitingCallsTheLastIsLoaded) {
  for (int i = 0; i < 200; ++i) call("file:///" + std::to_string(i), false);
  test::runPending();
  EXPECT_THAT(host_.shownUris(), ElementsAre("file:///199"));
}

TEST_F(PreviewSessionTest, SpaceTwiceInOneBreathShowsNothing) {
  call(kA, true);
  call(kA, true);
  test::runPending();
  EXPECT_THAT(host_.shown, IsEmpty());
  EXPECT_FALSE(session_.isBusy());
}

TEST_F(PreviewSessionTest, CloseTakesBackAWaitingCall) {
  call(kA, true);
  session_.close();
  test::runPending();
  EXPECT_THAT(host_.shown, IsEmpty());
}

TEST_F(PreviewSessionTest, CloseWithNothingShownIsHarmless) {
  session_.close();
  EXPECT_EQ(host_.closeCount, 0);
}

TEST_F(PreviewSessionTest, WhileAnItemIsLookedUpTheRulesHold) {
  resolver_.isSlow = true;
  callAndWait(kA, true);
  EXPECT_TRUE(session_.isBusy());
  callAndWait(kA, false);
  EXPECT_THAT(resolver_.asked, ElementsAre(kA));
  callAndWait(kB, false);
  EXPECT_THAT(resolver_.asked, ElementsAre(kA, kB));
  resolver_.waiting(NoItemReason::Unreachable);
  ASSERT_EQ(host_.shown.size(), 1u);
  EXPECT_EQ(host_.shown[0].uri, kB);
  EXPECT_EQ(std::get<NoItemReason>(host_.shown[0].item), NoItemReason::Unreachable);
}

TEST_F(PreviewSessionTest, ClosingStopsALookUp) {
  resolver_.isSlow = true;
  callAndWait(kA, true);
  callAndWait(kA, true);
  EXPECT_FALSE(resolver_.waiting);
  EXPECT_FALSE(session_.isBusy());
}

TEST_F(PreviewSessionTest, ArrowsWalkThroughWhatWasOpened) {
  session_.open({kA, kB, kC}, "token");
  test::runPending();
  EXPECT_EQ(host_.shown[0].activationToken, "token");
  for (const auto direction :
       {SelectionDirection::Up, SelectionDirection::Right, SelectionDirection::Down,
        SelectionDirection::Right, SelectionDirection::Left}) {
    EXPECT_TRUE(session_.moveSelection(direction));
    test::runPending();
  }
  EXPECT_THAT(host_.shownUris(), ElementsAre(kA, kB, kC, kB));
}

TEST_F(PreviewSessionTest, ArrowsAreTheFileManagersUnlessThereIsAWalk) {
  callAndWait(kA, true);
  EXPECT_FALSE(session_.moveSelection(SelectionDirection::Down));
  session_.open({kA}, "");
  test::runPending();
  EXPECT_FALSE(session_.moveSelection(SelectionDirection::Down));
  session_.open({kA, kB}, "");
  test::runPending();
  callAndWait(kC, false);
  EXPECT_FALSE(session_.moveSelection(SelectionDirection::Down));
}

TEST_F(PreviewSessionTest, OpeningWhatIsShownBringsItForward) {
  callAndWait(kA, true);
  session_.open({kA}, "");
  test::runPending();
  EXPECT_THAT(host_.shownUris(), ElementsAre(kA, kA));
  EXPECT_EQ(host_.closeCount, 0);
}

TEST_F(PreviewSessionTest, OnlyWhatAPersonAskedToSeeComesForward) {
  callAndWait(kA, true);   // Space
  callAndWait(kB, false);  // another selection
  callAndWait(kC, true);   // Space, on another item
  session_.open({kA, kB}, "");
  test::runPending();
  session_.moveSelection(SelectionDirection::Right);
  test::runPending();
  std::vector<bool> comesForward;
  for (const PreviewRequest& request : host_.shown) comesForward.push_back(request.comesForward);
  EXPECT_THAT(comesForward, ElementsAre(true, false, true, true, false));
}

TEST_F(PreviewSessionTest, OpeningNothingIsNothing) {
  session_.open({}, "");
  EXPECT_FALSE(session_.isBusy());
}

}  // namespace
}  // namespace lumisk::desktop
