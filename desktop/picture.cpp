#include "desktop/picture.h"

#include "desktop/gref.h"

namespace lumisk::desktop {

bool writePicture(GtkWidget* widget, const std::string& path) {
  const auto paintable = GRef<GdkPaintable>::adopt(gtk_widget_paintable_new(widget));
  GtkSnapshot* snapshot = gtk_snapshot_new();
  gdk_paintable_snapshot(paintable.get(), snapshot, gtk_widget_get_width(widget),
                         gtk_widget_get_height(widget));
  GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
  if (node == nullptr) return false;
  GskRenderer* renderer = gtk_native_get_renderer(gtk_widget_get_native(widget));
  const auto texture =
      GRef<GdkTexture>::adopt(gsk_renderer_render_texture(renderer, node, nullptr));
  gsk_render_node_unref(node);
  return gdk_texture_save_to_png(texture.get(), path.c_str()) == TRUE;
}

}  // namespace lumisk::desktop
