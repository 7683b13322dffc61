#pragma once

#include <webkit/webkit.h>

namespace lumisk::desktop {

/// Has the pages of the views with this manager heed what their addresses say beside the number of
/// the load (`PageLoad`): scripts of the host's in the pages' own world, before the pages' scripts.
void installPageScripts(WebKitUserContentManager* manager);

}  // namespace lumisk::desktop
