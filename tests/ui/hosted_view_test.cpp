#include "ui/hosted_view.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "ui/outline.h"
#include "ui/view_state.h"

namespace lumisk::ui {
namespace {

// Counts how often it appeared, and its own segment was chosen.
struct Counter {
  struct State {
    int appeared = 0;
    int chosen = 0;
  };
  ViewState<State> state{State{}};

  View body() const {
    return SegmentedPicker{
        .selection = std::to_string(state->appeared) + "/" + std::to_string(state->chosen),
        .onSelect = [state = state](const std::string&) {
          state.change([](State& record) { ++record.chosen; });
        }};
  }
  void onAppear() const {
    state.change([](State& record) { ++record.appeared; });
  }
  void setOnChange(std::function<void()> onChange) const { state.setOnChange(std::move(onChange)); }
};

struct Plain {
  View body() const { return Divider{}; }
};

std::string selection(const HostedView& hosted) {
  return std::get<SegmentedPicker>(hosted.body().node).selection;
}

void choose(const View& body) { std::get<SegmentedPicker>(body.node).onSelect("any"); }

TEST(HostedView, KeepsTheStateOfItsView) {
  HostedView hosted{Counter()};
  EXPECT_EQ(selection(hosted), "0/0");
  hosted.onAppear();
  EXPECT_EQ(selection(hosted), "1/0");
  choose(hosted.body());
  choose(hosted.body());
  EXPECT_EQ(selection(hosted), "1/2");
}

TEST(HostedView, TellsOfEachChangeOnceTheStateIsNew) {
  HostedView hosted{Counter()};
  std::vector<std::string> seen;
  hosted.setOnChange([&] { seen.push_back(selection(hosted)); });
  hosted.onAppear();
  choose(hosted.body());
  EXPECT_EQ(seen, (std::vector<std::string>{"1/0", "1/1"}));
  hosted.setOnChange({});
  choose(hosted.body());
  EXPECT_EQ(seen.size(), 2U);
}

TEST(HostedView, SharesItsStateWithCopiesOfTheView) {
  const Counter counter;
  HostedView hosted{Counter(counter)};
  hosted.onAppear();
  EXPECT_EQ(counter.state->appeared, 1);
}

TEST(HostedView, BodyIsPure) {
  HostedView hosted{Counter()};
  hosted.onAppear();
  EXPECT_EQ(hosted.body(), hosted.body());
}

TEST(HostedView, ActionsOutliveItAndReachNobody) {
  const Counter counter;
  int changes = 0;
  auto hosted = std::make_unique<HostedView>(Counter(counter));
  hosted->setOnChange([&] { ++changes; });
  const View body = hosted->body();
  hosted.reset();
  choose(body);
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(counter.state->chosen, 1);
}

TEST(HostedView, MayBeLetGoOfWhileItTellsOfAChange) {
  auto hosted = std::make_unique<HostedView>(Counter());
  const std::string word(100, 'x');
  std::string told;
  hosted->setOnChange([&, kept = word] {
    hosted.reset();
    told = kept;  // what is being called is still there
  });
  const View body = hosted->body();
  choose(body);
  EXPECT_EQ(told, word);
  EXPECT_EQ(hosted, nullptr);
}

TEST(HostedView, TakesAViewWithoutStateAndTrigger) {
  HostedView hosted{Plain()};
  hosted.setOnChange([] { FAIL() << "nothing can change"; });
  hosted.onAppear();
  EXPECT_EQ(outline(hosted.body()), "divider\n");
}

TEST(HostedView, TellsWhichViewItHosts) {
  const HostedView hosted{Plain()};
  EXPECT_NE(hosted.as<Plain>(), nullptr);
  EXPECT_EQ(hosted.as<Counter>(), nullptr);
}

}  // namespace
}  // namespace lumisk::ui
