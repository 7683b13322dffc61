#include "desktop/curtained_view.h"

namespace lumisk::desktop {
namespace {

struct CurtainedView {
  WebKitWebView parent = {};
  gboolean isClosed = FALSE;
  Placement placement;
};
struct CurtainedViewClass {
  WebKitWebViewClass parent;
};

G_DEFINE_TYPE(CurtainedView, curtained_view, WEBKIT_TYPE_WEB_VIEW)

CurtainedView* asCurtained(gpointer view) { return static_cast<CurtainedView*>(view); }

/// The engine draws in any case: drawn by a graphics card, the page gets its next frame only once
/// the one before was taken. What nobody sees is not painted, which is what takes the time.
void snapshot(GtkWidget* widget, GtkSnapshot* shown) {
  const auto draw = GTK_WIDGET_CLASS(curtained_view_parent_class)->snapshot;
  if (asCurtained(widget)->isClosed == FALSE) return draw(widget, shown);
  GtkSnapshot* unseen = gtk_snapshot_new();
  draw(widget, unseen);
  GskRenderNode* node = gtk_snapshot_free_to_node(unseen);
  if (node != nullptr) gsk_render_node_unref(node);
}

void allocate(GtkWidget* widget, int width, int height, int baseline) {
  GTK_WIDGET_CLASS(curtained_view_parent_class)->size_allocate(widget, width, height, baseline);
  asCurtained(widget)->placement = {width, height, gtk_widget_get_mapped(widget) == TRUE};
  g_signal_emit_by_name(widget, "placed");
}

void unmap(GtkWidget* widget) {
  asCurtained(widget)->placement.isCurrent = false;
  GTK_WIDGET_CLASS(curtained_view_parent_class)->unmap(widget);
}

void curtained_view_init(CurtainedView*) {}

void curtained_view_class_init(CurtainedViewClass* klass) {
  GTK_WIDGET_CLASS(klass)->snapshot = snapshot;
  GTK_WIDGET_CLASS(klass)->size_allocate = allocate;
  GTK_WIDGET_CLASS(klass)->unmap = unmap;
  g_signal_new("placed", G_TYPE_FROM_CLASS(klass), G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr,
               G_TYPE_NONE, 0);
}

}  // namespace

GType curtainedViewType() { return curtained_view_get_type(); }

void setCurtainClosed(WebKitWebView* view, bool isClosed) {
  gboolean& current = asCurtained(view)->isClosed;
  if (current == static_cast<gboolean>(isClosed)) return;
  current = static_cast<gboolean>(isClosed);
  gtk_widget_queue_draw(GTK_WIDGET(view));
}

bool isCurtainClosed(WebKitWebView* view) { return asCurtained(view)->isClosed == TRUE; }

Placement placementOf(WebKitWebView* view) { return asCurtained(view)->placement; }

}  // namespace lumisk::desktop
