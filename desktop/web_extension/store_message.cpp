#include "desktop/web_extension/store_message.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kForm = "(ssas)";

std::string childText(GVariant* parent, gsize index) {
  GVariant* child = g_variant_get_child_value(parent, index);
  std::string text = g_variant_get_string(child, nullptr);
  g_variant_unref(child);
  return text;
}

}  // namespace

GVariant* toVariant(const LibraryStore& store) {
  GVariantBuilder paths;
  g_variant_builder_init(&paths, G_VARIANT_TYPE("as"));
  for (const std::string& path : store.paths) g_variant_builder_add(&paths, "s", path.c_str());
  return g_variant_new(kForm, store.cdnHost.c_str(), store.storeUri.c_str(), &paths);
}

LibraryStore storeFromVariant(GVariant* message) {
  if (message == nullptr || !g_variant_is_of_type(message, G_VARIANT_TYPE(kForm))) return {};
  LibraryStore store{childText(message, 0), childText(message, 1), {}};
  GVariant* paths = g_variant_get_child_value(message, 2);
  for (gsize index = 0; index < g_variant_n_children(paths); ++index)
    store.paths.push_back(childText(paths, index));
  g_variant_unref(paths);
  return store;
}

}  // namespace lumisk::desktop
