#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace lumisk {

/// What a page's script may post and no message of ours holds: null, undefined, lists, functions,
/// and whatever lies deeper than one dictionary. So a message is never deep, however it was built.
struct ScriptOther {
  bool operator==(const ScriptOther&) const = default;
};

/// A value in a message. A script's numbers are doubles; a host that knows an integer says so.
using ScriptValue = std::variant<ScriptOther, bool, std::int64_t, double, std::string>;

using ScriptDictionary = std::map<std::string, ScriptValue, std::less<>>;

/// What is read of a dictionary. A host may leave the rest where it is, however much it is.
inline constexpr std::array<std::string_view, 3> kMessageKeys = {"type", "index", "checked"};

/// What a page's script posted to a message handler.
using ScriptMessageBody = std::variant<ScriptValue, ScriptDictionary>;

}  // namespace lumisk
