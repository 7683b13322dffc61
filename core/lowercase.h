#pragma once

#include <string>
#include <string_view>

namespace lumisk {

/// `text` (well-formed UTF-8) in lower case: Unicode's full mapping without a language's own rules
/// (The Unicode Standard, section 3.13, toLowercase). A capital sigma at the end of a word becomes
/// the final form, and U+0130 becomes i with a dot above.
std::string lowercased(std::string_view text);

}  // namespace lumisk
