#include "desktop/panel_size.h"

#ifdef GDK_WINDOWING_X11
#include <gdk/x11/gdkx.h>
#endif

#include <algorithm>

#include "core/lowercase.h"
#include "core/preview_kind.h"
#include "desktop/gref.h"

namespace lumisk::desktop {
namespace {

// A document is a page, a table is wide, a folder's rows are short.
constexpr Size kDocument{880, 940};
constexpr Size kTable{1100, 720};
constexpr Size kFolder{680, 560};
constexpr Size kMessage{600, 480};

constexpr Size kUnknownWorkArea{1280, 800};
constexpr int kMostPercent = 80;

Size idealSize(ContentShape shape) {
  switch (shape) {
    case ContentShape::Document:
      return kDocument;
    case ContentShape::Table:
      return kTable;
    case ContentShape::Folder:
      return kFolder;
    case ContentShape::Message:
      return kMessage;
  }
  return kDocument;
}

GdkMonitor* monitorOfSurface(GtkWidget* window) {
  GtkNative* native = gtk_widget_get_native(window);
  GdkSurface* surface = native == nullptr ? nullptr : gtk_native_get_surface(native);
  return surface == nullptr
             ? nullptr
             : gdk_display_get_monitor_at_surface(gtk_widget_get_display(window), surface);
}

/// A surface that has not been shown is on no monitor with some compositors; the first one is the
/// best guess then.
GRef<GdkMonitor> monitorFor(GtkWidget* window) {
  if (GdkMonitor* monitor = monitorOfSurface(window)) return GRef<GdkMonitor>::retain(monitor);
  GListModel* monitors = gdk_display_get_monitors(gtk_widget_get_display(window));
  return GRef<GdkMonitor>::adopt(GDK_MONITOR(g_list_model_get_item(monitors, 0)));
}

Size workAreaOf(GdkMonitor* monitor) {
  GdkRectangle area{};
  gdk_monitor_get_geometry(monitor, &area);
#ifdef GDK_WINDOWING_X11
  // Only X tells what panels and docks leave; elsewhere the compositor keeps windows clear of them.
  if (GDK_IS_X11_MONITOR(monitor)) gdk_x11_monitor_get_workarea(monitor, &area);
#endif
  return area.width > 0 && area.height > 0 ? Size{area.width, area.height} : kUnknownWorkArea;
}

}  // namespace

ContentShape shapeOf(const FileURL& url, bool isFolder) {
  if (isFolder) return ContentShape::Folder;
  const PreviewKind kind = previewKindOfFile(lowercased(url.pathExtension()));
  return kind == PreviewKind::Table ? ContentShape::Table : ContentShape::Document;
}

Size initialSize(ContentShape shape, Size workArea) {
  const Size ideal = idealSize(shape);
  return {std::min(ideal.width, workArea.width * kMostPercent / 100),
          std::min(ideal.height, workArea.height * kMostPercent / 100)};
}

Size workAreaFor(GtkWidget* window) {
  const GRef<GdkMonitor> monitor = monitorFor(window);
  return monitor ? workAreaOf(monitor.get()) : kUnknownWorkArea;
}

}  // namespace lumisk::desktop
