#pragma once

#include <string>
#include <string_view>

namespace lumisk {

/// `text` with `argument` in place of its conversions, and "%%" as "%".
///
/// Texts come from message catalogues, which are data, so they are never handed to printf. Known
/// are
/// "%s", "%d", "%ld" and "%lld", each also with a position ("%1$s"); anything else stands as it is,
/// and a text without a conversion is returned unchanged.
///
///     formatMessage("%lld items", "12")   →   12 items
std::string formatMessage(std::string_view text, std::string_view argument);

}  // namespace lumisk
