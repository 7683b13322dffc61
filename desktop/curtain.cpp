#include "desktop/curtain.h"

namespace lumisk::desktop {
namespace {

struct Curtain {
  GtkWidget parent = {};
  GtkWidget* view = nullptr;
  gboolean isDrawnByCard = FALSE;
  gboolean isClosed = FALSE;
  Placement placement;
};
struct CurtainClass {
  GtkWidgetClass parent;
};

G_DEFINE_TYPE(Curtain, curtain, GTK_TYPE_WIDGET)

Curtain* asCurtain(gpointer widget) { return static_cast<Curtain*>(widget); }
Curtain* curtainBefore(WebKitWebView* view) { return asCurtain(curtainOf(view)); }

void measure(GtkWidget* widget, GtkOrientation orientation, int forSize, int* minimum, int* natural,
             int* minimumBaseline, int* naturalBaseline) {
  gtk_widget_measure(asCurtain(widget)->view, orientation, forSize, minimum, natural,
                     minimumBaseline, naturalBaseline);
}

void allocate(GtkWidget* widget, int width, int height, int baseline) {
  Curtain* curtain = asCurtain(widget);
  gtk_widget_allocate(curtain->view, width, height, baseline, nullptr);
  curtain->placement = {width, height, gtk_widget_get_mapped(curtain->view) == TRUE};
  g_signal_emit_by_name(widget, "placed");
}

void viewUnmapped(GtkWidget*, gpointer curtain) { asCurtain(curtain)->placement.isCurrent = false; }

/// As long as the view is not asked for its picture, its frames do not have the window drawn: the
/// toolkit passes on that a widget wants to be drawn once until it is. Each drawing of the window
/// would put off the one that shows the page by 16 milliseconds.
void snapshot(GtkWidget* widget, GtkSnapshot* shown) {
  const Curtain* curtain = asCurtain(widget);
  if (curtain->isClosed == FALSE) return gtk_widget_snapshot_child(widget, curtain->view, shown);
  if (curtain->isDrawnByCard == FALSE) return;
  GtkSnapshot* unseen = gtk_snapshot_new();
  gtk_widget_snapshot_child(widget, curtain->view, unseen);
  GskRenderNode* node = gtk_snapshot_free_to_node(unseen);
  if (node != nullptr) gsk_render_node_unref(node);
}

void dispose(GObject* object) {
  g_clear_pointer(&asCurtain(object)->view, gtk_widget_unparent);
  G_OBJECT_CLASS(curtain_parent_class)->dispose(object);
}

void curtain_init(Curtain*) {}

void curtain_class_init(CurtainClass* curtainClass) {
  G_OBJECT_CLASS(curtainClass)->dispose = dispose;
  GtkWidgetClass* widgetClass = GTK_WIDGET_CLASS(curtainClass);
  widgetClass->measure = measure;
  widgetClass->size_allocate = allocate;
  widgetClass->snapshot = snapshot;
  gtk_widget_class_set_css_name(widgetClass, "curtain");
  gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GROUP);
  g_signal_new("placed", G_TYPE_FROM_CLASS(curtainClass), G_SIGNAL_RUN_LAST, 0, nullptr, nullptr,
               nullptr, G_TYPE_NONE, 0);
}

}  // namespace

GtkWidget* curtainNew(WebKitWebView* view, bool isDrawnByCard) {
  auto* widget = GTK_WIDGET(g_object_new(curtain_get_type(), nullptr));
  Curtain* curtain = asCurtain(widget);
  curtain->view = GTK_WIDGET(view);
  curtain->isDrawnByCard = static_cast<gboolean>(isDrawnByCard);
  g_signal_connect_object(view, "unmap", G_CALLBACK(viewUnmapped), widget, G_CONNECT_AFTER);
  gtk_widget_set_parent(curtain->view, widget);
  return widget;
}

GtkWidget* curtainOf(WebKitWebView* view) { return gtk_widget_get_parent(GTK_WIDGET(view)); }

void setCurtainClosed(WebKitWebView* view, bool isClosed) {
  gboolean& current = curtainBefore(view)->isClosed;
  if (current == static_cast<gboolean>(isClosed)) return;
  current = static_cast<gboolean>(isClosed);
  gtk_widget_queue_draw(curtainOf(view));
}

bool isCurtainClosed(WebKitWebView* view) { return curtainBefore(view)->isClosed == TRUE; }

Placement placementOf(WebKitWebView* view) { return curtainBefore(view)->placement; }

}  // namespace lumisk::desktop
