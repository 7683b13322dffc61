#include "desktop/preparation.h"

#include <atomic>
#include <new>
#include <string>
#include <utility>

#include "desktop/gtk_platform.h"
#include "web/page_file.h"

namespace lumisk::desktop {
namespace {

/// One that is not wanted any more may still be at a step while the next begins.
constexpr int kThreads = 2;

bool isDarkNow(const Platform& platform) {
  return isDarkMode(platform.mainQueue, platform.appearance);
}

}  // namespace

BackgroundQueue& preparationQueue() {
  static auto* const queue = new GlibBackgroundQueue(kThreads);
  return *queue;
}

/// What the thread has of its own: it may be at it when the panel and its platform have gone. The
/// strings are only handed on to the view.
struct Preparation::Work {
  FileURL url;
  bool isDark;
  const StringTable& strings;
  std::optional<std::string> caches;
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
    FilePreview preview = prepareFile(
        url, [this] { return isDark; }, strings, [this] { return isWanted.load(); });
    result.emplace(PreparedPreview{std::move(preview), std::nullopt});
    auto* const view = std::get_if<ui::HostedView>(&result->preview);
    if (view == nullptr || !isWanted) return;
    view->onAppear();
    const ui::SharedText html = pageOf(*view);
    if (!caches || html.empty() || !isWanted) return;
    if (auto file = writePageBeside(*caches, html.view()))
      result->page.emplace(PreparedPage{html, *std::move(file)});
  }
};

Preparation::Preparation(FileURL url, const Platform& platform, BackgroundQueue& queue,
                         std::function<void(PreparedPreview)> onReady)
    : url_(std::move(url)), platform_(platform), queue_(queue), onReady_(std::move(onReady)) {
  begin();
}

Preparation::~Preparation() { work_->isWanted = false; }

void Preparation::begin() {
  work_.reset(new Work{url_, isDarkNow(platform_), platform_.strings, platform_.caches.path()});
  queue_.async([this, work = work_, &mainQueue = platform_.mainQueue] {
    work->run();
    if (!work->isWanted) return;
    mainQueue.async([this, work] {
      if (work->isWanted) end();
    });
  });
}

/// A page is of the appearance at the moment when it comes to be shown, as its ground is.
void Preparation::end() {
  if (work_->isDark != isDarkNow(platform_)) return begin();
  const auto onReady = std::move(onReady_);
  const auto work = work_;
  onReady(*std::move(work->result));
}

}  // namespace lumisk::desktop
