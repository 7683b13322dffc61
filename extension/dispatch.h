#pragma once

#include <functional>
#include <variant>

#include "core/error_record.h"
#include "core/file_url.h"
#include "extension/completion.h"
#include "platform/platform.h"
#include "ui/hosted_view.h"
#include "ui/shared_text.h"

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

// The two halves of that for a file, for a host that does the first half of a large one on another
// thread.

/// The view of a file, or why there is none.
using FilePreview = std::variant<ui::HostedView, ErrorRecord>;

/// Reads the file at `url`, which is no folder, and builds its view for the appearance that
/// `isDark` tells, which is asked once the file has been read. On any thread. `strings` is borrowed
/// by the view.
///
/// Until a host draws it the view is the caller's alone, so it may appear on that thread too: the
/// views of files do nothing but compute then. `isWanted` is asked now and then; after a no the
/// result is of no use.
FilePreview prepareFile(const FileURL& url, const std::function<bool()>& isDark,
                        const StringTable& strings, const std::function<bool()>& isWanted = {});

/// What a preview ends with that does not fit in memory, whether its file, its page or another
/// part.
ErrorRecord notEnoughMemoryError();

/// Has `controller` embed the view, or tells of the error, as `dispatchPreview` does. Main thread
/// only.
void answerWith(FilePreview preview, PreviewViewController& controller, const Platform& platform,
                const Completion& completion);

/// The page that the view of a file shows first; of a JSON file there is none before the view has
/// appeared. Empty for a view of another kind.
ui::SharedText pageOf(const ui::HostedView& fileView);

}  // namespace lumisk
