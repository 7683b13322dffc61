#pragma once

#include <webkit/webkit.h>

namespace lumisk::desktop {

/// Leaves the page's context menu what a person does with something that is looked at: copy, follow
/// a link, play, and edit in a field. Windows and downloads are refused anyway, and the engine's
/// own way back and reload know nothing of where a document begins. Where nothing is left no menu
/// comes.
void trimPageMenu(WebKitWebView* view);

}  // namespace lumisk::desktop
