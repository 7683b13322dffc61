#pragma once

#include <glib-object.h>

#include <functional>
#include <utility>

// Owners for what GObject's C interface hands out: references, signal handlers and main-loop
// sources. Each releases what it holds when it goes, and only then.

namespace lumisk::desktop {

/// One strong reference to a GObject, or none.
template <typename T>
class GRef {
 public:
  GRef() = default;
  GRef(const GRef& other) : object_(other.object_) { addReference(); }
  GRef(GRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~GRef() { release(); }
  GRef& operator=(const GRef& other) {
    if (this != &other) *this = GRef(other);
    return *this;
  }
  GRef& operator=(GRef&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Takes over a reference that the caller owns ("transfer full").
  static GRef adopt(T* object) {
    GRef ref;
    ref.object_ = object;
    return ref;
  }
  /// Adds a reference of its own ("transfer none"), and claims a new widget's floating one.
  static GRef retain(T* object) {
    if (object != nullptr) g_object_ref_sink(object);
    return adopt(object);
  }

  T* get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  void addReference() {
    if (object_ != nullptr) g_object_ref(object_);
  }
  void release() {
    if (object_ != nullptr) g_object_unref(object_);
  }

  T* object_ = nullptr;
};

/// A handler on a signal of an object that may go before or after it.
class SignalHandler {
 public:
  SignalHandler() = default;
  SignalHandler(gpointer object, const char* signal, GCallback callback, gpointer data)
      : object_(G_OBJECT(object)), id_(g_signal_connect(object, signal, callback, data)) {
    g_object_add_weak_pointer(object_, weakPointer());
  }
  SignalHandler(const SignalHandler&) = delete;
  SignalHandler& operator=(const SignalHandler&) = delete;
  ~SignalHandler() {
    if (object_ == nullptr) return;
    g_signal_handler_disconnect(object_, id_);
    g_object_remove_weak_pointer(object_, weakPointer());
  }

 private:
  gpointer* weakPointer() { return reinterpret_cast<gpointer*>(&object_); }

  GObject* object_ = nullptr;
  gulong id_ = 0;
};

/// A task that the main loop runs later, unless this object goes or is set anew before.
class Deferred {
 public:
  Deferred() = default;
  Deferred(const Deferred&) = delete;
  Deferred& operator=(const Deferred&) = delete;
  ~Deferred() { cancel(); }

  /// Runs `task` once, after `milliseconds`; forgets an earlier task that has not run.
  void after(unsigned milliseconds, std::function<void()> task) {
    cancel();
    task_ = std::move(task);
    source_ = g_timeout_add(milliseconds, &Deferred::run, this);
  }
  /// Runs `step` whenever the main loop is idle, until it returns false. Work of a lower priority
  /// (a higher number) waits until there is none of a higher one.
  void whileIdle(std::function<bool()> step, int priority = G_PRIORITY_DEFAULT_IDLE) {
    cancel();
    step_ = std::move(step);
    source_ = g_idle_add_full(priority, &Deferred::runStep, this, nullptr);
  }
  void cancel() {
    if (source_ != 0) g_source_remove(source_);
    source_ = 0;
  }
  bool isPending() const { return source_ != 0; }

 private:
  static gboolean run(gpointer self) {
    auto* deferred = static_cast<Deferred*>(self);
    deferred->source_ = 0;
    // Moved out: the task may set another one, or destroy this object.
    const std::function<void()> task = std::move(deferred->task_);
    task();
    return G_SOURCE_REMOVE;
  }
  static gboolean runStep(gpointer self) {
    auto* deferred = static_cast<Deferred*>(self);
    // Moved out for the same reason. Both end the source, and only the source knows of it.
    std::function<bool()> step = std::move(deferred->step_);
    const bool isMore = step();
    if (g_source_is_destroyed(g_main_current_source())) return G_SOURCE_REMOVE;
    if (isMore) {
      deferred->step_ = std::move(step);
      return G_SOURCE_CONTINUE;
    }
    deferred->source_ = 0;
    return G_SOURCE_REMOVE;
  }

  guint source_ = 0;
  std::function<void()> task_;
  std::function<bool()> step_;
};

}  // namespace lumisk::desktop
