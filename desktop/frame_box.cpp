#include "desktop/frame_box.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "desktop/text_scale.h"

namespace lumisk::desktop {
namespace {

struct Settings {
  Flexibility childFlexibility;
  std::optional<ui::Padding> padding;
  std::optional<ui::Frame> frame;
  bool keepsIdealSize = false;
};

struct FrameBox {
  GtkWidget parent;
  GtkWidget* child;
  Settings* settings;
};
struct FrameBoxClass {
  GtkWidgetClass parent;
};

G_DEFINE_TYPE(FrameBox, frame_box, GTK_TYPE_WIDGET)

FrameBox* asBox(gpointer widget) { return static_cast<FrameBox*>(widget); }

int pixels(double length) { return static_cast<int>(std::lround(length)); }

/// Both sides together.
int paddingAlong(const Settings& settings, GtkOrientation orientation) {
  if (!settings.padding) return 0;
  const bool along = settings.padding->edges == ui::Edges::All ||
                     (settings.padding->edges == ui::Edges::Horizontal) ==
                         (orientation == GTK_ORIENTATION_HORIZONTAL);
  return along ? 2 * pixels(settings.padding->length) : 0;
}

/// A frame around a text grows with it: a column stays as wide as what it is to hold.
std::optional<int> fixedLength(const FrameBox& box, GtkOrientation orientation) {
  const auto& frame = box.settings->frame;
  if (!frame) return std::nullopt;
  const auto& length = orientation == GTK_ORIENTATION_HORIZONTAL ? frame->width : frame->height;
  if (!length) return std::nullopt;
  return pixels(GTK_IS_LABEL(box.child) ? *length * textScale(box.child) : *length);
}

bool childFills(const FrameBox& box, GtkOrientation orientation) {
  const bool isSized = box.settings->frame || box.settings->keepsIdealSize;
  if (!isSized) return true;
  return orientation == GTK_ORIENTATION_HORIZONTAL ? box.settings->childFlexibility.horizontal
                                                   : box.settings->childFlexibility.vertical;
}

struct Lengths {
  int minimum = 0;
  int natural = 0;
};

Lengths measureChild(const FrameBox& box, GtkOrientation orientation, int forSize) {
  Lengths lengths;
  gtk_widget_measure(box.child, orientation, forSize, &lengths.minimum, &lengths.natural, nullptr,
                     nullptr);
  return lengths;
}

/// How wide the child is in a box that gives it `available`, and how high in turn.
int childWidth(const FrameBox& box, int available) {
  const Lengths width = measureChild(box, GTK_ORIENTATION_HORIZONTAL, -1);
  if (childFills(box, GTK_ORIENTATION_HORIZONTAL)) return std::max(available, width.minimum);
  if (box.settings->keepsIdealSize) return width.natural;
  return std::max(width.minimum, std::min(width.natural, available));
}

void measure(GtkWidget* widget, GtkOrientation orientation, int forSize, int* minimum, int* natural,
             int* minimumBaseline, int* naturalBaseline) {
  const FrameBox& box = *asBox(widget);
  const Settings& settings = *box.settings;
  *minimumBaseline = *naturalBaseline = -1;
  if (const auto fixed = fixedLength(box, orientation)) {
    *minimum = *natural = *fixed;
    return;
  }
  int childSize = -1;
  if (orientation == GTK_ORIENTATION_VERTICAL && forSize >= 0) {
    const int inner = forSize - paddingAlong(settings, GTK_ORIENTATION_HORIZONTAL);
    childSize = childWidth(box, std::max(inner, 0));
  }
  const Lengths lengths = measureChild(box, orientation, childSize);
  const int padding = paddingAlong(settings, orientation);
  *natural = lengths.natural + padding;
  *minimum = settings.keepsIdealSize ? *natural : lengths.minimum + padding;
}

/// Where a child of `length` stands in `available`, from the leading edge.
int offset(ui::HorizontalAlignment alignment, int available, int length) {
  switch (alignment) {
    case ui::HorizontalAlignment::Leading:
      return 0;
    case ui::HorizontalAlignment::Center:
      return (available - length) / 2;
    case ui::HorizontalAlignment::Trailing:
      return available - length;
  }
  return 0;
}

void sizeAllocate(GtkWidget* widget, int width, int height, int baseline) {
  const FrameBox& box = *asBox(widget);
  const Settings& settings = *box.settings;
  const int horizontal = paddingAlong(settings, GTK_ORIENTATION_HORIZONTAL);
  const int vertical = paddingAlong(settings, GTK_ORIENTATION_VERTICAL);
  const int available = std::max(width - horizontal, 0);
  const int availableHeight = std::max(height - vertical, 0);
  const int childWide = childWidth(box, available);
  const Lengths high = measureChild(box, GTK_ORIENTATION_VERTICAL, childWide);
  const int childHigh = childFills(box, GTK_ORIENTATION_VERTICAL)
                            ? std::max(availableHeight, high.minimum)
                            : std::max(high.minimum, std::min(high.natural, availableHeight));
  const auto alignment =
      settings.frame ? settings.frame->alignment : ui::HorizontalAlignment::Center;
  int x = offset(alignment, available, childWide);
  if (gtk_widget_get_direction(widget) == GTK_TEXT_DIR_RTL) x = available - childWide - x;
  const GtkAllocation allocation{
      horizontal / 2 + x, vertical / 2 + (availableHeight - childHigh) / 2, childWide, childHigh};
  gtk_widget_size_allocate(box.child, &allocation, baseline);
}

GtkSizeRequestMode requestMode(GtkWidget* widget) {
  return gtk_widget_get_request_mode(asBox(widget)->child);
}

void dispose(GObject* object) {
  FrameBox* box = asBox(object);
  g_clear_pointer(&box->child, gtk_widget_unparent);
  G_OBJECT_CLASS(frame_box_parent_class)->dispose(object);
}

void finalize(GObject* object) {
  delete asBox(object)->settings;
  G_OBJECT_CLASS(frame_box_parent_class)->finalize(object);
}

void frame_box_class_init(FrameBoxClass* boxClass) {
  G_OBJECT_CLASS(boxClass)->dispose = dispose;
  G_OBJECT_CLASS(boxClass)->finalize = finalize;
  GtkWidgetClass* widgetClass = GTK_WIDGET_CLASS(boxClass);
  widgetClass->measure = measure;
  widgetClass->size_allocate = sizeAllocate;
  widgetClass->get_request_mode = requestMode;
  gtk_widget_class_set_css_name(widgetClass, "framebox");
  gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GROUP);
}

void frame_box_init(FrameBox* box) { box->settings = new Settings(); }

}  // namespace

GtkWidget* frameBoxNew(GtkWidget* child, Flexibility childFlexibility) {
  auto* widget = GTK_WIDGET(g_object_new(frame_box_get_type(), nullptr));
  asBox(widget)->child = child;
  asBox(widget)->settings->childFlexibility = childFlexibility;
  gtk_widget_set_parent(child, widget);
  return widget;
}

void frameBoxSetPadding(GtkWidget* box, const ui::Padding& padding) {
  asBox(box)->settings->padding = padding;
  gtk_widget_queue_resize(box);
}

void frameBoxSetFrame(GtkWidget* box, const ui::Frame& frame) {
  asBox(box)->settings->frame = frame;
  const bool isAtEnd = frame.alignment == ui::HorizontalAlignment::Trailing;
  if (GTK_IS_LABEL(asBox(box)->child)) {
    // A text that is too long for the frame breaks into lines, which end where the frame ends.
    gtk_label_set_xalign(GTK_LABEL(asBox(box)->child), isAtEnd ? 1 : 0);
    gtk_label_set_justify(GTK_LABEL(asBox(box)->child),
                          isAtEnd ? GTK_JUSTIFY_RIGHT : GTK_JUSTIFY_LEFT);
  }
  gtk_widget_queue_resize(box);
}

void frameBoxSetFixedSize(GtkWidget* box) { asBox(box)->settings->keepsIdealSize = true; }

ui::Padding frameBoxPadding(GtkWidget* box) {
  return asBox(box)->settings->padding.value_or(ui::Padding{});
}

ui::Frame frameBoxFrame(GtkWidget* box) {
  return asBox(box)->settings->frame.value_or(ui::Frame{});
}

}  // namespace lumisk::desktop
