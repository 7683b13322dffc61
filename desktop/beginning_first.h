#pragma once

#include <webkit/webkit.h>

#include <cstddef>

#include "desktop/web_extension/page_address.h"

// The first screenful of a long source, document of JSON or table before the rest of it. The page's
// file and its text stay as they are: a script of the host's holds back what lies below, and lets
// it in when it can be waited for, or when somebody goes there.

namespace lumisk::desktop {

/// How to show a code page of `size` bytes. A Markdown document is shown at once: its own script
/// makes all of it before there is anything to show.
Showing showingOfCode(std::size_t size);

/// Has the page that is there show all that it holds back, before the engine does anything that is
/// asked of it later: to look for a text, to go to its end, to print.
void showAll(WebKitWebView* page);

}  // namespace lumisk::desktop
