#include "desktop/gtk_platform.h"

#include <deque>
#include <filesystem>
#include <future>
#include <mutex>
#include <system_error>
#include <utility>

namespace lumisk::desktop {
namespace {

gboolean runTask(gpointer task) {
  (*static_cast<Task*>(task))();
  return G_SOURCE_REMOVE;
}

void deleteTask(gpointer task) { delete static_cast<Task*>(task); }

/// Of the whole program: background work may still hand over its result while all else ends.
GlibMainQueue& programsMainQueue() {
  static auto* const queue = new GlibMainQueue;
  return *queue;
}

}  // namespace

bool GlibMainQueue::isMainThread() const { return g_thread_self() == mainThread_; }

void GlibMainQueue::async(Task task) {
  g_idle_add_full(G_PRIORITY_DEFAULT, runTask, new Task(std::move(task)), deleteTask);
}

void GlibMainQueue::sync(const Task& task) {
  std::promise<void> done;
  async([&] {
    task();
    done.set_value();
  });
  done.get_future().wait();
}

/// The tasks that no thread has begun. The pool's own queue would let go of them on whichever
/// thread is the last to end.
struct GlibBackgroundQueue::Waiting {
  std::mutex mutex;
  std::deque<Task> tasks;

  Task takeNext() {
    const std::lock_guard lock(mutex);
    if (tasks.empty()) return {};
    Task task = std::move(tasks.front());
    tasks.pop_front();
    return task;
  }
};

GlibBackgroundQueue::GlibBackgroundQueue(int mostThreads)
    : waiting_(std::make_shared<Waiting>()),
      pool_(g_thread_pool_new(runNext, nullptr, mostThreads, FALSE, nullptr)) {}

GlibBackgroundQueue::~GlibBackgroundQueue() {
  {
    const std::lock_guard lock(waiting_->mutex);
    waiting_->tasks.clear();
  }
  // Turns that are left find no task.
  g_thread_pool_free(pool_, FALSE, FALSE);
}

void GlibBackgroundQueue::async(Task task) {
  {
    const std::lock_guard lock(waiting_->mutex);
    waiting_->tasks.push_back(std::move(task));
  }
  g_thread_pool_push(pool_, new std::shared_ptr<Waiting>(waiting_), nullptr);
}

void GlibBackgroundQueue::runNext(gpointer turn, gpointer) {
  const std::unique_ptr<std::shared_ptr<Waiting>> waiting(
      static_cast<std::shared_ptr<Waiting>*>(turn));
  if (const Task task = (*waiting)->takeNext()) task();
}

AppearanceMatch AdwaitaAppearance::bestMatch() const {
  return adw_style_manager_get_dark(adw_style_manager_get_default()) == TRUE
             ? AppearanceMatch::Dark
             : AppearanceMatch::Light;
}

DesktopCachesDirectory::~DesktopCachesDirectory() {
  // With a page that a thread has written and nobody has taken up, if there is one.
  std::error_code ignored;
  if (!ownFolder_.empty()) std::filesystem::remove_all(ownFolder_, ignored);
}

std::optional<std::string> DesktopCachesDirectory::path() const {
  const char* caches = g_get_user_cache_dir();
  if (caches != nullptr && g_path_is_absolute(caches)) return caches;
  if (ownFolder_.empty()) {
    char* made = g_dir_make_tmp("lumisk-XXXXXX", nullptr);
    if (made != nullptr) ownFolder_ = made;
    g_free(made);
  }
  // Nothing can be written there, and the page is then loaded from its text.
  return ownFolder_.empty() ? std::string("/nonexistent") : ownFolder_;
}

GtkPlatform::GtkPlatform(const std::string& localeFolder)
    : strings_("", localeFolder),
      collation_(makeIcuCollation()),
      platform_{programsMainQueue(), backgroundQueue_, appearance_,  strings_, makeIcuDateFormatter,
                *collation_,         icons_,           hiddenNames_, caches_,  standardOutput_} {}

}  // namespace lumisk::desktop
