#pragma once

#include <functional>
#include <type_traits>
#include <utility>

namespace lumisk::ui {

/// A callback in a view value; may be absent, and is then simply not called.
///
/// All actions compare equal: a view value that differs in its callbacks alone draws the same, and
/// whoever draws it calls those of the latest value.
template <typename... Arguments>
class Action {
 public:
  Action() = default;
  Action(std::function<void(Arguments...)> function) : function_(std::move(function)) {}
  template <typename Function>
  requires std::is_invocable_v<Function&, Arguments...> Action(Function function)
      : function_(std::move(function)) {}

  bool isPresent() const noexcept { return static_cast<bool>(function_); }
  void operator()(Arguments... arguments) const {
    if (function_) function_(arguments...);
  }

  bool operator==(const Action& /*other*/) const noexcept { return true; }

 private:
  std::function<void(Arguments...)> function_;
};

}  // namespace lumisk::ui
