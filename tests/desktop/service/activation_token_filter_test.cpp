#include "desktop/service/activation_token_filter.h"

#include <gtest/gtest.h>

#include <string>

#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"

namespace lumisk::desktop {
namespace {

GRef<GDBusMessage> call(const char* interface, const char* member, GVariant* body) {
  auto message = GRef<GDBusMessage>::adopt(
      g_dbus_message_new_method_call(kFilesPreviewerName, kFilesPreviewerPath, interface, member));
  g_dbus_message_set_serial(message.get(), 7);
  g_dbus_message_set_sender(message.get(), ":1.42");
  if (body != nullptr) g_dbus_message_set_body(message.get(), body);
  return message;
}

GRef<GDBusMessage> filtered(const GRef<GDBusMessage>& message) {
  return GRef<GDBusMessage>::adopt(
      withActivationToken(G_DBUS_MESSAGE(g_object_ref(message.get()))));
}

std::string bodyOf(const GRef<GDBusMessage>& message) {
  GVariant* const body = g_dbus_message_get_body(message.get());
  const OwnedText text(body != nullptr ? g_variant_print(body, TRUE) : nullptr);
  return text ? text.get() : "";
}

TEST(ActivationTokenFilter, ShortCallGetsAnEmptyToken) {
  for (const gboolean closes : {gboolean{TRUE}, gboolean{FALSE}}) {
    const auto message =
        call(kFilesInterface, "ShowFile", g_variant_new("(ssb)", "file:///é", "x11:3a", closes));
    const auto longer = filtered(message);
    EXPECT_STREQ(g_dbus_message_get_signature(longer.get()), "ssbs");
    EXPECT_EQ(bodyOf(longer), std::string("('file:///é', 'x11:3a', ") +
                                  (closes != FALSE ? "true" : "false") + ", '')");
  }
}

TEST(ActivationTokenFilter, ShortCallKeepsItsEnvelope) {
  const auto message =
      call(kFilesInterface, "ShowFile", g_variant_new("(ssb)", "file:///a", "", TRUE));
  g_dbus_message_lock(message.get());
  const auto longer = filtered(message);
  EXPECT_EQ(g_dbus_message_get_serial(longer.get()), 7u);
  EXPECT_STREQ(g_dbus_message_get_sender(longer.get()), ":1.42");
  EXPECT_STREQ(g_dbus_message_get_path(longer.get()), kFilesPreviewerPath);
  EXPECT_STREQ(g_dbus_message_get_interface(longer.get()), kFilesInterface);
  EXPECT_STREQ(g_dbus_message_get_member(longer.get()), "ShowFile");
  EXPECT_STREQ(g_dbus_message_get_destination(longer.get()), kFilesPreviewerName);
}

TEST(ActivationTokenFilter, EveryOtherMessagePassesUntouched) {
  const GRef<GDBusMessage> rows[] = {
      call(kFilesInterface, "ShowFile", g_variant_new("(ssbs)", "file:///a", "", TRUE, "token")),
      call(kFilesInterface, "ShowFile", g_variant_new("(ss)", "file:///a", "")),
      call(kFilesInterface, "ShowFile", g_variant_new("(sib)", "file:///a", 5, TRUE)),
      call(kFilesInterface, "ShowFile", nullptr),
      call(kFilesInterface, "Close", nullptr),
      call(kFilesInterface, "Close", g_variant_new("(ssb)", "", "", TRUE)),
      call(kFilesOlderInterface, "ShowFile", g_variant_new("(ssb)", "file:///a", "", TRUE)),
      call(kNemoInterface, "ShowFile", g_variant_new("(ssb)", "file:///a", "", TRUE)),
      call(nullptr, "ShowFile", g_variant_new("(ssb)", "file:///a", "", TRUE)),
      GRef<GDBusMessage>::adopt(
          g_dbus_message_new_signal(kFilesPreviewerPath, kFilesInterface, "ShowFile")),
  };
  for (const GRef<GDBusMessage>& message : rows) {
    const std::string body = bodyOf(message);
    const auto passed = filtered(message);
    EXPECT_EQ(passed.get(), message.get()) << body;
    EXPECT_EQ(bodyOf(passed), body);
  }
}

}  // namespace
}  // namespace lumisk::desktop
