#pragma once

#include <optional>
#include <string_view>

#include "desktop/web_extension/page_address.h"

namespace lumisk::desktop {

/// Whether a page can show a diagram, judged by its text: it can when it says "mermaid" more often
/// than the pages' own fixed text does, in upper or lower case. A document may also spell the name
/// with character references or, once it has closed the element that holds it, by a script; a text
/// with "&#" or a second "</script" in the document's part counts as naming it, and so does one
/// that may hold another page. One that puts the name together in an event handler of its own
/// ("onerror") does not, and gets no diagram. Nothing for a page that does not load the library, to
/// which the question means nothing.
std::optional<Diagrams> diagramsIn(std::string_view page);

}  // namespace lumisk::desktop
