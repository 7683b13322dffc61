#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace lumisk::test {

/// A string table that holds what the test put in; empty at first.
struct FakeStrings final : StringTable {
  std::optional<std::string> text(std::string_view key) const override {
    const auto found = texts.find(key);
    if (found == texts.end()) return std::nullopt;
    return found->second;
  }
  std::optional<std::string> pluralText(std::string_view key,
                                        std::int64_t /*count*/) const override {
    return text(key);
  }
  std::map<std::string, std::string, std::less<>> texts;
};

}  // namespace lumisk::test
