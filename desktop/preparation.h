#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "core/file_url.h"
#include "desktop/web_view.h"
#include "extension/dispatch.h"
#include "platform/platform.h"

namespace lumisk::desktop {

/// The preview of a file, ready to be shown.
struct PreparedPreview {
  /// A view that has appeared.
  FilePreview preview;
  /// The page that it shows first, unless that could not be written.
  std::optional<PreparedPage> page;
};

/// The queue for preparations: a few threads of their own, which no folder's size keeps waiting,
/// nor any file but those whose file system does not answer.
BackgroundQueue& preparationQueue();

/// Makes the preview of a large file on another thread: of 50 MB, reading it and building and
/// writing the page take up to half a second, in which the panel would answer no key.
class Preparation {
 public:
  /// Begins. `platform` and `queue` are borrowed. `onReady` is called on the main thread in a later
  /// turn, unless this object has gone by then; it may destroy the object.
  Preparation(FileURL url, const Platform& platform, BackgroundQueue& queue,
              std::function<void(PreparedPreview)> onReady);
  Preparation(const Preparation&) = delete;
  Preparation& operator=(const Preparation&) = delete;
  /// Nobody wants it any more: the thread ends with the step that it is at, and nothing is told of
  /// how it went.
  ~Preparation();

 private:
  struct Work;
  void begin();
  void end();

  const FileURL url_;
  const Platform& platform_;
  BackgroundQueue& queue_;
  std::function<void(PreparedPreview)> onReady_;
  std::shared_ptr<Work> work_;
};

}  // namespace lumisk::desktop
