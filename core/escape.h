#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumisk {

class Output;

/// Which characters become entities, so that text between tags shows as text.
enum class Escaping {
  Html,               ///< & < >
  AngleBracketsOnly,  ///< < >; an entity written in the text keeps its meaning
};

/// Writes `text` with "&amp;", "&lt;" and "&gt;" for the characters that `escaping` names; every
/// other byte passes unchanged. The result is safe between tags, not inside an attribute value.
///
///     a < b && c > "d"   →   a &lt; b &amp;&amp; c &gt; "d"
void appendEscaped(Output& out, std::string_view text, Escaping escaping);

/// The same as a string.
std::string escaped(std::string_view text, Escaping escaping);

/// Size in bytes of what `appendEscaped` writes for `text`.
std::size_t escapedSize(std::string_view text, Escaping escaping);

}  // namespace lumisk
