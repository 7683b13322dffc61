#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumisk::test {

/// What `appendFormattedJson` writes for `text`, or nothing when it is no JSON. Every kind of block
/// is run, with and without a longer text around, and all must agree.
std::optional<std::string> formattedJson(std::string_view text);

/// `text` with "&lt;", "&gt;" and "&amp;" read back.
std::string unescapedHtml(std::string_view text);

/// A second, slow implementation of `appendFormattedJson`: by recursion, byte by byte.
std::optional<std::string> naiveFormattedJson(std::string_view text);

/// A second, slow implementation of `json::writeShortestDecimal`, for literals with fraction or
/// exponent: tries every number of digits. The literal itself when it is to be kept.
std::string naiveShortestDecimal(std::string_view literal);

}  // namespace lumisk::test
