#include "desktop/service/activation_token_filter.h"

#include "desktop/service/previewer_names.h"

namespace lumisk::desktop {

namespace {

bool isShortShowFile(GDBusMessage* message) {
  return g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL &&
         g_strcmp0(g_dbus_message_get_interface(message), kFilesInterface) == 0 &&
         g_strcmp0(g_dbus_message_get_member(message), "ShowFile") == 0 &&
         g_strcmp0(g_dbus_message_get_signature(message), "ssb") == 0;
}

GDBusMessage* filter(GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer) {
  return isIncoming ? withActivationToken(message) : message;
}

}  // namespace

GDBusMessage* withActivationToken(GDBusMessage* message) {
  if (!isShortShowFile(message)) return message;
  const char* uri = nullptr;
  const char* parent = nullptr;
  gboolean closeIfAlreadyShown = FALSE;
  g_variant_get(g_dbus_message_get_body(message), "(&s&sb)", &uri, &parent, &closeIfAlreadyShown);
  // Nothing but a failure to duplicate attached file descriptors makes a copy fail.
  GDBusMessage* const longer = g_dbus_message_copy(message, nullptr);
  if (longer == nullptr) return message;
  g_dbus_message_set_body(longer, g_variant_new("(ssbs)", uri, parent, closeIfAlreadyShown, ""));
  g_object_unref(message);
  return longer;
}

ActivationTokenFilter::ActivationTokenFilter(GDBusConnection* connection)
    : connection_(GRef<GDBusConnection>::retain(connection)),
      id_(g_dbus_connection_add_filter(connection, filter, nullptr, nullptr)) {}

ActivationTokenFilter::~ActivationTokenFilter() {
  g_dbus_connection_remove_filter(connection_.get(), id_);
}

}  // namespace lumisk::desktop
