#include "desktop/preparation.h"

#include <atomic>
#include <new>
#include <string>
#include <utility>

#include "web/page_file.h"

namespace lumisk::desktop {

/// What the thread has of its own: it may be at it when the panel and its platform have gone. The
/// strings are only handed on to the view.
struct Preparation::Work {
  FileURL url;
  bool isDark;
  const StringTable& strings;
  std::optional<std::string> caches;
  std::function<void(PreparedPreview)> onReady;
  std::atomic<bool> isWanted = true;
  std::optional<PreparedPreview> result = std::nullopt;

  void run() {
    try {
      prepare();
    } catch (const std::bad_alloc&) {
      result.emplace(PreparedPreview{notEnoughMemoryError(), std::nullopt});
    }
  }

  void prepare() {
    if (!isWanted) return;
    result.emplace(PreparedPreview{prepareFile(
                                       url, [this] { return isDark; }, strings),
                                   std::nullopt});
    auto* const view = std::get_if<ui::HostedView>(&result->preview);
    if (view == nullptr || !isWanted) return;
    view->onAppear();
    const ui::SharedText html = pageOf(*view);
    if (!caches || !isWanted) return;
    if (auto file = writePageBeside(*caches, html.view()))
      result->page.emplace(PreparedPage{html, *std::move(file)});
  }
};

Preparation::Preparation(const FileURL& url, const Platform& platform,
                         std::function<void(PreparedPreview)> onReady)
    : work_(new Work{url, isDarkMode(platform.mainQueue, platform.appearance), platform.strings,
                     platform.caches.path(), std::move(onReady)}) {
  MainQueue& mainQueue = platform.mainQueue;
  platform.backgroundQueue.async([work = work_, &mainQueue] {
    work->run();
    if (!work->isWanted) return;
    mainQueue.async([work] {
      if (work->isWanted) work->onReady(*std::move(work->result));
    });
  });
}

Preparation::~Preparation() { work_->isWanted = false; }

}  // namespace lumisk::desktop
