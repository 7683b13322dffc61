#include "web/coordinator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumisk {
namespace {

using Toggle = std::pair<std::int64_t, bool>;

// What the owner hears of one message.
std::vector<Toggle> togglesFor(const ScriptMessageBody& body) {
  std::vector<Toggle> toggles;
  Coordinator coordinator({.onCheckboxToggle = [&](std::int64_t index, bool isChecked) {
    toggles.emplace_back(index, isChecked);
  }});
  coordinator.didReceiveScriptMessage(body);
  return toggles;
}

ScriptDictionary message(ScriptValue index, ScriptValue checked) {
  return {{"type", std::string("checkbox")}, {"index", index}, {"checked", checked}};
}

ScriptDictionary without(const std::string& key) {
  ScriptDictionary dictionary = message(std::int64_t{2}, true);
  dictionary.erase(key);
  return dictionary;
}

ScriptDictionary ofType(ScriptValue type) {
  ScriptDictionary dictionary = message(std::int64_t{2}, true);
  dictionary["type"] = std::move(type);
  return dictionary;
}

struct AcceptedMessage {
  const char* label;
  ScriptMessageBody body;
  Toggle heard;
};

TEST(Coordinator, HandsAValidMessageToItsParent) {
  constexpr std::int64_t kFirst = std::numeric_limits<std::int64_t>::min();
  ScriptDictionary withMore = message(3.0, false);
  withMore["colour"] = std::string("red");
  withMore["list"] = ScriptOther{};
  const AcceptedMessage cases[] = {
      {"integer", message(std::int64_t{7}, true), {7, true}},
      {"unchecked", message(std::int64_t{0}, false), {0, false}},
      {"a script's number", message(12.0, true), {12, true}},
      {"minus zero", message(-0.0, true), {0, true}},
      {"negative", message(-1.0, true), {-1, true}},
      {"the least", message(kFirst, true), {kFirst, true}},
      {"the least as a script's number", message(-0x1p63, true), {kFirst, true}},
      {"the greatest a script's number can be",
       message(0x1.fffffffffffffp62, true),
       {9223372036854774784, true}},
      {"more than is wanted", withMore, {3, false}},
  };
  for (const AcceptedMessage& row : cases) {
    EXPECT_EQ(togglesFor(row.body), std::vector<Toggle>{row.heard}) << row.label;
  }
}

struct IgnoredMessage {
  const char* label;
  ScriptMessageBody body;
};

TEST(Coordinator, IgnoresEverythingElse) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  const IgnoredMessage cases[] = {
      {"null or a list", ScriptValue(ScriptOther{})},
      {"text", ScriptValue(std::string("checkbox"))},
      {"number", ScriptValue(1.0)},
      {"integer", ScriptValue(std::int64_t{1})},
      {"boolean", ScriptValue(true)},
      {"empty dictionary", ScriptDictionary{}},
      {"type missing", without("type")},
      {"index missing", without("index")},
      {"checked missing", without("checked")},
      {"another type", ofType(std::string("radio"))},
      {"type in another case", ofType(std::string("Checkbox"))},
      {"type with a blank", ofType(std::string("checkbox "))},
      {"type with a NUL", ofType(std::string("checkbox\0", 9))},
      {"beginning of the type", ofType(std::string("check"))},
      {"type empty", ofType(std::string())},
      {"type a number", ofType(std::int64_t{1})},
      {"type null", ofType(ScriptOther{})},
      {"index as text", message(std::string("2"), true)},
      {"index a boolean", message(true, true)},
      {"index null", message(ScriptOther{}, true)},
      {"index between integers", message(1.5, true)},
      {"index just off an integer", message(std::nextafter(1.0, 2.0), true)},
      {"index not a number", message(kNaN, true)},
      {"index infinite", message(kInfinite, true)},
      {"index minus infinite", message(-kInfinite, true)},
      {"index too large", message(0x1p63, true)},
      {"index far too large", message(1e300, true)},
      {"index too small", message(std::nextafter(-0x1p63, -kInfinite), true)},
      {"checked as text", message(std::int64_t{2}, std::string("true"))},
      {"checked as a number", message(std::int64_t{2}, 1.0)},
      {"checked as an integer", message(std::int64_t{2}, std::int64_t{1})},
      {"checked null", message(std::int64_t{2}, ScriptOther{})},
      {"key in another case",
       ScriptDictionary{{"type", std::string("checkbox")}, {"Index", 2.0}, {"checked", true}}},
  };
  for (const IgnoredMessage& row : cases) EXPECT_TRUE(togglesFor(row.body).empty()) << row.label;
}

TEST(Coordinator, WithoutACallbackAValidMessageHasNoEffect) {
  Coordinator coordinator({.htmlContent = "<p></p>"});
  coordinator.didReceiveScriptMessage(message(std::int64_t{1}, true));
  coordinator.didFinishNavigation();
}

TEST(Coordinator, TellsOfEveryFinishedNavigation) {
  int loads = 0;
  Coordinator coordinator({.onLoad = [&] { ++loads; }});
  EXPECT_EQ(loads, 0);
  coordinator.didFinishNavigation();
  coordinator.didFinishNavigation();
  coordinator.didFinishNavigation();
  EXPECT_EQ(loads, 3);
}

TEST(Coordinator, KeepsTheParentItWasMadeWith) {
  std::string heard;
  HTMLPreviewView view{.htmlContent = "first",
                       .onCheckboxToggle = [&](std::int64_t, bool) { heard += "first toggle "; },
                       .onLoad = [&] { heard += "first load "; }};
  Coordinator coordinator(view);
  view.htmlContent = "second";
  view.onCheckboxToggle = [&](std::int64_t, bool) { heard += "second toggle "; };
  view.onLoad = [&] { heard += "second load "; };
  coordinator.didFinishNavigation();
  coordinator.didReceiveScriptMessage(message(std::int64_t{0}, true));
  EXPECT_EQ(heard, "first load first toggle ");
  EXPECT_EQ(coordinator.parent().htmlContent.view(), "first");
}

}  // namespace
}  // namespace lumisk
