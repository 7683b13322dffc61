#include "remote_file.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <utility>

namespace lumisk::desktop::test {
namespace {

/// A `GFile`, in the form that GObject wants it.
struct RemoteFile {
  GObject parent;
  const RemoteItem* item;
};

GType remoteFileType();

RemoteFile* remote(GFile* file) { return reinterpret_cast<RemoteFile*>(file); }
const RemoteItem& itemOf(GFile* file) { return *remote(file)->item; }

GFile* makeFile(const RemoteItem* item) {
  GFile* const file = G_FILE(g_object_new(remoteFileType(), nullptr));
  remote(file)->item = item;
  return file;
}

char* textOrNone(const std::string& text) {
  return text.empty() ? nullptr : g_strdup(text.c_str());
}

GFileInfo* queryInfo(GFile* file, const char*, GFileQueryInfoFlags, GCancellable*, GError** error) {
  const RemoteItem& item = itemOf(file);
  if (item.error) {
    g_set_error_literal(error, G_IO_ERROR, *item.error, "no answer");
    return nullptr;
  }
  GFileInfo* const info = g_file_info_new();
  if (!item.target.empty()) {
    g_file_info_set_attribute_string(info, G_FILE_ATTRIBUTE_STANDARD_TARGET_URI,
                                     item.target.c_str());
  }
  return info;
}

void initializeInterface(gpointer interface, gpointer) {
  auto* const file = static_cast<GFileIface*>(interface);
  file->dup = [](GFile* self) { return makeFile(remote(self)->item); };
  file->is_native = [](GFile*) -> gboolean { return FALSE; };
  file->get_path = [](GFile* self) { return textOrNone(itemOf(self).path); };
  file->query_info = queryInfo;
}

GType remoteFileType() {
  static const GType type = [] {
    const GType made =
        g_type_register_static_simple(G_TYPE_OBJECT, "LumiskTestRemoteFile", sizeof(GObjectClass),
                                      nullptr, sizeof(RemoteFile), nullptr, GTypeFlags(0));
    const GInterfaceInfo interface = {initializeInterface, nullptr, nullptr};
    g_type_add_interface_static(made, G_TYPE_FILE, &interface);
    return made;
  }();
  return type;
}

}  // namespace

void offerRemoteItem(const char* scheme, RemoteItem item) {
  const auto lookUp = [](GVfs*, const char*, gpointer known) {
    return makeFile(static_cast<const RemoteItem*>(known));
  };
  const gboolean isNew = g_vfs_register_uri_scheme(
      g_vfs_get_default(), scheme, lookUp, new RemoteItem(std::move(item)),
      [](gpointer known) { delete static_cast<RemoteItem*>(known); }, lookUp, nullptr, nullptr);
  ASSERT_EQ(isNew, TRUE) << scheme;
}

}  // namespace lumisk::desktop::test
