#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

#include "desktop/gref.h"
#include "desktop/service/activation_token_filter.h"
#include "desktop/service/preview_host.h"
#include "desktop/service/preview_session.h"

namespace lumisk::desktop {

/// The previewer's objects on one connection of the session bus: every interface that file managers
/// call, in front of one session. A call is noted and answered at once; what it asked to see is
/// shown in a later turn of the main loop. What closes the window, which takes no time, is done
/// before the answer.
class ExportedPreviewer {
 public:
  /// Both are borrowed.
  ExportedPreviewer(GDBusConnection* connection, PreviewSession& session, const PreviewHost& host);
  ExportedPreviewer(const ExportedPreviewer&) = delete;
  ExportedPreviewer& operator=(const ExportedPreviewer&) = delete;
  ~ExportedPreviewer();

  /// Sends the properties that have changed since they were last sent. Files does not ask for them:
  /// it trusts what it was told.
  void announceChanges();
  /// Tells the file manager that the person wants another selection.
  void sendSelectionEvent(SelectionDirection direction) const;

  /// Called after each call of a method.
  std::function<void()> onCall;

 private:
  static void methodCalled(GDBusConnection*, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* parameters,
                           GDBusMethodInvocation* invocation, gpointer self);
  static GVariant* propertyWanted(GDBusConnection*, const char* sender, const char* path,
                                  const char* interface, const char* property, GError**,
                                  gpointer self);
  void exportInterface(const char* path, GDBusInterfaceInfo* interface);
  void emit(const char* interface, const char* signal, GVariant* parameters) const;

  struct Properties {
    bool isVisible = false;
    std::string parentHandle = {};
  };
  Properties present() const;

  GRef<GDBusConnection> connection_;
  PreviewSession& session_;
  const PreviewHost& host_;
  ActivationTokenFilter filter_;
  std::vector<guint> exported_;
  Properties announced_;
};

}  // namespace lumisk::desktop
