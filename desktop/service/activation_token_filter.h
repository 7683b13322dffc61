#pragma once

#include <gio/gio.h>

#include "desktop/gref.h"

namespace lumisk::desktop {

/// Files before version 50 calls `ShowFile` of the present interface with three arguments, later
/// ones with a fourth, an activation token. GDBus refuses a call whose signature is not the one
/// registered before any handler sees it, so the short form is made the long one on its way in.
///
/// Takes over the reference to `message` and returns one: to `message` itself unless it is a short
/// call, else to a copy with an empty token. Pure: it runs on GDBus's own thread.
GDBusMessage* withActivationToken(GDBusMessage* message);

/// Has `withActivationToken` see every message that comes in, as long as this object lives.
class ActivationTokenFilter {
 public:
  explicit ActivationTokenFilter(GDBusConnection* connection);
  ActivationTokenFilter(const ActivationTokenFilter&) = delete;
  ActivationTokenFilter& operator=(const ActivationTokenFilter&) = delete;
  ~ActivationTokenFilter();

 private:
  GRef<GDBusConnection> connection_;
  guint id_;
};

}  // namespace lumisk::desktop
