#include "desktop/service/exported_previewer.h"

#include <string_view>
#include <utility>

#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"
#include "desktop/service/window_handle.h"

namespace lumisk::desktop {

namespace {

constexpr const char* literal(const char* text) { return text; }
constexpr const char* kInterfaces[] = {
#include "embedded/previewer_interfaces_xml.inc"
};
static_assert(std::size(kInterfaces) == 1);

GDBusInterfaceInfo* interfaceNamed(const char* name) {
  static const OwnedNodeInfo node(g_dbus_node_info_new_for_xml(kInterfaces[0], nullptr));
  return g_dbus_node_info_lookup_interface(node.get(), name);
}

ShowCall presentCall(GVariant* parameters) {
  const char* uri = nullptr;
  const char* parent = nullptr;
  gboolean closeIfAlreadyShown = FALSE;
  const char* token = nullptr;
  g_variant_get(parameters, "(&s&sb&s)", &uri, &parent, &closeIfAlreadyShown, &token);
  return {.uri = uri,
          .parentHandle = parent,
          .closeIfAlreadyShown = closeIfAlreadyShown != FALSE,
          .activationToken = token};
}

ShowCall olderCall(GVariant* parameters) {
  const char* uri = nullptr;
  gint32 xid = 0;
  gboolean closeIfAlreadyShown = FALSE;
  g_variant_get(parameters, "(&sib)", &uri, &xid, &closeIfAlreadyShown);
  return {.uri = uri,
          .parentHandle = windowHandleOfXid(xid),
          .closeIfAlreadyShown = closeIfAlreadyShown != FALSE,
          // Their interfaces have no signal for them.
          .arrows = Arrows::Scroll};
}

}  // namespace

ExportedPreviewer::ExportedPreviewer(GDBusConnection* connection, PreviewSession& session,
                                     const PreviewHost& host)
    : connection_(GRef<GDBusConnection>::retain(connection)),
      session_(session),
      host_(host),
      filter_(connection),
      announced_(present()) {
  exportInterface(kFilesPreviewerPath, interfaceNamed(kFilesInterface));
  exportInterface(kFilesPreviewerPath, interfaceNamed(kFilesOlderInterface));
  exportInterface(kNemoPreviewerPath, interfaceNamed(kNemoInterface));
}

ExportedPreviewer::~ExportedPreviewer() {
  for (const guint id : exported_) g_dbus_connection_unregister_object(connection_.get(), id);
}

void ExportedPreviewer::exportInterface(const char* path, GDBusInterfaceInfo* interface) {
  static const GDBusInterfaceVTable kHandlers = {
      &ExportedPreviewer::methodCalled, &ExportedPreviewer::propertyWanted, nullptr, {}};
  ErrorSlot error;
  const guint id = g_dbus_connection_register_object(connection_.get(), path, interface, &kHandlers,
                                                     this, nullptr, &error);
  if (id != 0) {
    exported_.push_back(id);
  } else {
    g_warning("The previewer is not on the bus at %s: %s", path, error.message());
  }
}

void ExportedPreviewer::methodCalled(GDBusConnection*, const char*, const char*,
                                     const char* interface, const char* method,
                                     GVariant* parameters, GDBusMethodInvocation* invocation,
                                     gpointer self) {
  auto* const previewer = static_cast<ExportedPreviewer*>(self);
  // GDBus has checked the method's name and its arguments against the interface.
  if (std::string_view(method) == "Close") {
    previewer->session_.close();
  } else {
    const bool isPresent = std::string_view(interface) == kFilesInterface;
    previewer->session_.showFile(isPresent ? presentCall(parameters) : olderCall(parameters));
  }
  g_dbus_method_invocation_return_value(invocation, nullptr);
  if (previewer->onCall) previewer->onCall();
}

GVariant* ExportedPreviewer::propertyWanted(GDBusConnection*, const char*, const char*, const char*,
                                            const char* property, GError**, gpointer self) {
  const Properties present = static_cast<ExportedPreviewer*>(self)->present();
  if (std::string_view(property) == "Visible") return g_variant_new_boolean(present.isVisible);
  return g_variant_new_string(present.parentHandle.c_str());
}

ExportedPreviewer::Properties ExportedPreviewer::present() const {
  return {.isVisible = host_.isVisible(), .parentHandle = host_.parentHandle()};
}

void ExportedPreviewer::announceChanges() {
  const Properties before = std::exchange(announced_, present());
  GVariantBuilder changed;
  g_variant_builder_init(&changed, G_VARIANT_TYPE_VARDICT);
  if (announced_.isVisible != before.isVisible) {
    g_variant_builder_add(&changed, "{sv}", "Visible", g_variant_new_boolean(announced_.isVisible));
  }
  if (announced_.parentHandle != before.parentHandle) {
    g_variant_builder_add(&changed, "{sv}", "ParentHandle",
                          g_variant_new_string(announced_.parentHandle.c_str()));
  }
  const OwnedVariant dictionary(g_variant_ref_sink(g_variant_builder_end(&changed)));
  if (g_variant_n_children(dictionary.get()) == 0) return;
  emit("org.freedesktop.DBus.Properties", "PropertiesChanged",
       g_variant_new("(s@a{sv}as)", kFilesInterface, dictionary.get(), nullptr));
}

void ExportedPreviewer::sendSelectionEvent(SelectionDirection direction) const {
  emit(kFilesInterface, "SelectionEvent", g_variant_new("(u)", static_cast<guint32>(direction)));
}

void ExportedPreviewer::emit(const char* interface, const char* signal,
                             GVariant* parameters) const {
  // Fails only when the connection is closed: then nobody listens.
  g_dbus_connection_emit_signal(connection_.get(), nullptr, kFilesPreviewerPath, interface, signal,
                                parameters, nullptr);
}

}  // namespace lumisk::desktop
