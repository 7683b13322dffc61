#include "desktop/service/gio_item_resolver.h"

#include <memory>

#include "desktop/service/owned.h"

namespace lumisk::desktop {

namespace {

/// A device or server that has not answered by then leaves a person without any preview.
constexpr unsigned kLongestWaitInMilliseconds = 10'000;

struct Question {
  std::function<void(ItemOrReason)> found;
};

using Answer = std::unique_ptr<ItemOrReason>;

std::optional<FileURL> pathOf(GFile* file) {
  const OwnedText path(g_file_get_path(file));
  if (!path) return std::nullopt;
  return FileURL::fromPath(path.get());
}

// Trash and the list of recent files hold stand-ins, which name what they stand for.
ItemOrReason lookUp(GFile* file, GCancellable* cancellable) {
  if (auto url = pathOf(file)) return *std::move(url);
  ErrorSlot error;
  const auto info = GRef<GFileInfo>::adopt(g_file_query_info(
      file, G_FILE_ATTRIBUTE_STANDARD_TARGET_URI, G_FILE_QUERY_INFO_NONE, cancellable, &error));
  if (!info) {
    return error.is(G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED) ? NoItemReason::NotLocal
                                                          : NoItemReason::Unreachable;
  }
  const char* const target =
      g_file_info_get_attribute_string(info.get(), G_FILE_ATTRIBUTE_STANDARD_TARGET_URI);
  if (target == nullptr) return NoItemReason::NotLocal;
  const auto targetFile = GRef<GFile>::adopt(g_file_new_for_uri(target));
  if (auto url = pathOf(targetFile.get())) return *std::move(url);
  return NoItemReason::NotLocal;
}

void work(GTask* task, gpointer, gpointer uri, GCancellable* cancellable) {
  const auto file = GRef<GFile>::adopt(g_file_new_for_uri(static_cast<const char*>(uri)));
  auto answer = std::make_unique<ItemOrReason>(lookUp(file.get(), cancellable));
  g_task_return_pointer(task, answer.release(),
                        [](gpointer unread) { delete static_cast<ItemOrReason*>(unread); });
}

}  // namespace

void GioItemResolver::resolve(const std::string& uri, std::function<void(ItemOrReason)> found) {
  cancel();
  if (const auto known = resolveWithoutAsking(uri)) return found(*known);
  ask(uri, std::move(found));
}

void GioItemResolver::ask(const std::string& uri, std::function<void(ItemOrReason)> found) {
  running_ = GRef<GCancellable>::adopt(g_cancellable_new());
  timeLimit_.after(kLongestWaitInMilliseconds, [this, found] {
    cancel();
    found(NoItemReason::Unreachable);
  });
  auto whenAnswered = [this, found = std::move(found)](ItemOrReason item) {
    timeLimit_.cancel();
    found(std::move(item));
  };
  const auto task = GRef<GTask>::adopt(g_task_new(
      nullptr, running_.get(), &GioItemResolver::answered, new Question{std::move(whenAnswered)}));
  g_task_set_task_data(task.get(), g_strdup(uri.c_str()), g_free);
  // Mounts of servers that went away answer late or never: nobody waits for them.
  g_task_set_return_on_cancel(task.get(), TRUE);
  g_task_run_in_thread(task.get(), work);
}

void GioItemResolver::answered(GObject*, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Question> question(static_cast<Question*>(data));
  // Cancelled: the question is stale, and the resolver may be gone.
  const Answer answer(
      static_cast<ItemOrReason*>(g_task_propagate_pointer(G_TASK(result), nullptr)));
  if (answer) question->found(std::move(*answer));
}

void GioItemResolver::cancel() {
  timeLimit_.cancel();
  if (running_) g_cancellable_cancel(running_.get());
  running_ = {};
}

}  // namespace lumisk::desktop
