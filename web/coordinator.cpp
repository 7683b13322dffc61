#include "web/coordinator.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace lumisk {

namespace {

const ScriptValue* find(const ScriptDictionary& dictionary, std::string_view key) {
  const auto found = dictionary.find(key);
  return found == dictionary.end() ? nullptr : &found->second;
}

template <typename Type>
const Type* find(const ScriptDictionary& dictionary, std::string_view key) {
  return std::get_if<Type>(find(dictionary, key));
}

// A number that is an integer, in whichever form it comes. Text and booleans are no numbers.
std::optional<std::int64_t> integer(const ScriptValue* value) {
  if (const auto* exact = std::get_if<std::int64_t>(value)) return *exact;
  const auto* number = std::get_if<double>(value);
  constexpr double kLimit = 0x1p63;  // the first that is too large; its negative still fits
  if (!number || !(*number >= -kLimit && *number < kLimit)) return std::nullopt;
  if (std::trunc(*number) != *number) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

}  // namespace

void Coordinator::didFinishNavigation() { parent_.onLoad(); }

void Coordinator::didReceiveScriptMessage(const ScriptMessageBody& body) {
  const auto* message = std::get_if<ScriptDictionary>(&body);
  if (!message) return;
  const auto* type = find<std::string>(*message, "type");
  if (!type || *type != "checkbox") return;
  const std::optional<std::int64_t> index = integer(find(*message, "index"));
  if (!index) return;
  const auto* isChecked = find<bool>(*message, "checked");
  if (!isChecked) return;
  parent_.onCheckboxToggle(*index, *isChecked);
}

}  // namespace lumisk
