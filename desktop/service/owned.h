#pragma once

#include <gio/gio.h>

#include <memory>

// Owners for what GLib hands out and is no GObject.

namespace lumisk::desktop {

template <auto kRelease>
struct Releases {
  template <typename T>
  void operator()(T* released) const {
    kRelease(released);
  }
};

using OwnedText = std::unique_ptr<char, Releases<g_free>>;
using OwnedVariant = std::unique_ptr<GVariant, Releases<g_variant_unref>>;
using OwnedNodeInfo = std::unique_ptr<GDBusNodeInfo, Releases<g_dbus_node_info_unref>>;

/// Takes the error that a GLib function left in a `GError*`.
class ErrorSlot {
 public:
  ErrorSlot() = default;
  ErrorSlot(const ErrorSlot&) = delete;
  ErrorSlot& operator=(const ErrorSlot&) = delete;
  ~ErrorSlot() { g_clear_error(&error_); }

  GError** operator&() { return &error_; }
  explicit operator bool() const { return error_ != nullptr; }
  const char* message() const { return error_ != nullptr ? error_->message : ""; }
  bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code) != 0; }

 private:
  GError* error_ = nullptr;
};

}  // namespace lumisk::desktop
