#pragma once

#include <glib.h>

#include "desktop/web_extension/library_map.h"

// How the host hands the store's description to each web process: the extension's initialization
// data, `(ssas)`.

namespace lumisk::desktop {

/// A floating reference, which WebKit's setter takes over.
GVariant* toVariant(const LibraryStore& store);

/// The store in `message`; an empty one, which serves nothing, when the message is absent or of
/// another form.
LibraryStore storeFromVariant(GVariant* message);

}  // namespace lumisk::desktop
