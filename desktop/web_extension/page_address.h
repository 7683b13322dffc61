#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The address under which the host loads the page file. Every preview uses the same file, so the
// file's URL alone cannot tell one load from the next. A query, which a file URL ignores, makes
// each load's address its own: a late event of an earlier load is recognised, no scroll position is
// restored, and the web-process extension and the host's scripts in the page see, without a message
// that could arrive too early or too late, which libraries this load needs and how it is shown.

namespace lumisk::desktop {

/// Whether a page can make use of the diagram library.
enum class Diagrams { Possible, None };

/// Whether the page is shown as it comes, or its first screenful before the rest of it.
enum class Showing { AtOnce, BeginningFirst };

struct PageLoad {
  std::uint64_t number = 0;
  Diagrams diagrams = Diagrams::Possible;
  Showing showing = Showing::AtOnce;
};

/// `file:///x/preview.html` to `file:///x/preview.html?load=7&diagrams=none`.
std::string pageAddress(std::string_view fileUri, PageLoad load);

/// Whether this is the address of one of the host's loads, whatever part of the page it points to.
bool isPageAddress(std::string_view address);

/// Whether the page at this address was said to hold no diagram.
bool isWithoutDiagrams(std::string_view address);

}  // namespace lumisk::desktop
