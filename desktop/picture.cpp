#include "desktop/picture.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace lumisk::desktop {

GRef<GdkTexture> pictureOf(GtkWidget* widget) {
  const auto paintable = GRef<GdkPaintable>::adopt(gtk_widget_paintable_new(widget));
  GtkSnapshot* snapshot = gtk_snapshot_new();
  gdk_paintable_snapshot(paintable.get(), snapshot, gtk_widget_get_width(widget),
                         gtk_widget_get_height(widget));
  GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
  if (node == nullptr) return {};
  GskRenderer* renderer = gtk_native_get_renderer(gtk_widget_get_native(widget));
  auto picture = GRef<GdkTexture>::adopt(gsk_renderer_render_texture(renderer, node, nullptr));
  gsk_render_node_unref(node);
  return picture;
}

bool writePicture(GdkTexture* picture, const std::string& path) {
  return gdk_texture_save_to_png(picture, path.c_str()) == TRUE;
}

bool isBlank(GdkTexture* picture) {
  const auto width = static_cast<std::size_t>(gdk_texture_get_width(picture));
  const auto height = static_cast<std::size_t>(gdk_texture_get_height(picture));
  std::vector<std::uint32_t> pixels(width * height);
  gdk_texture_download(picture, reinterpret_cast<guchar*>(pixels.data()), width * 4);
  return std::adjacent_find(pixels.begin(), pixels.end(), std::not_equal_to<>()) == pixels.end();
}

}  // namespace lumisk::desktop
