#pragma once

#include "core/file_url.h"
#include "extension/completion.h"
#include "platform/platform.h"

namespace lumisk {

class PreviewViewController;

/// Answers one request: tells what the item at `url` is, builds its view, has `controller` embed it
/// and calls `completion`, all before it returns. A folder is told first, by the file system; a
/// file is read whole and its kind told by its name.
///
/// On failure nothing is embedded, and a line with the error goes to the standard output before the
/// completion learns of it. `platform` is borrowed by the view. Main thread only.
void dispatchPreview(const FileURL& url, PreviewViewController& controller,
                     const Platform& platform, const Completion& completion);

}  // namespace lumisk
