#include <gtk/gtk.h>

#include <cmath>
#include <string>

#include "desktop/node_elements.h"
#include "desktop/source_text.h"

namespace lumisk::desktop {
namespace {

GtkWidget* newScrolledWindow(bool showsIndicators) {
  GtkWidget* scrolled = gtk_scrolled_window_new();
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_NEVER,
                                 showsIndicators ? GTK_POLICY_AUTOMATIC : GTK_POLICY_EXTERNAL);
  return scrolled;
}

bool hasIndicators(GtkWidget* scrolled) {
  GtkPolicyType vertical = GTK_POLICY_NEVER;
  gtk_scrolled_window_get_policy(GTK_SCROLLED_WINDOW(scrolled), nullptr, &vertical);
  return vertical == GTK_POLICY_AUTOMATIC;
}

GtkWidget* transparentAncestor(GtkWidget* widget) {
  while (widget != nullptr && gtk_widget_get_opacity(widget) > 0)
    widget = gtk_widget_get_parent(widget);
  return widget;
}

/// Any content, scrolled as a whole.
class ScrollElement final : public NodeElement {
 public:
  ScrollElement(const ui::ScrollView& scroll, RenderContext& context)
      : context_(context),
        scrolled_(GRef<GtkWidget>::retain(newScrolledWindow(scroll.showsIndicators))) {
    showContent(*scroll.content);
  }

  GtkWidget* widget() const override { return scrolled_.get(); }
  bool update(const ui::Node& node) override {
    const auto& scroll = std::get<ui::ScrollView>(node);
    if (scroll.showsIndicators != hasIndicators(scrolled_.get())) return false;
    showContent(*scroll.content);
    return true;
  }
  ui::Node readBack() const override {
    return ui::ScrollView{hasIndicators(scrolled_.get()), ui::Content(content_->readBack())};
  }

 private:
  void showContent(const ui::View& view) {
    if (show(content_, view, Axis::None, context_))
      gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled_.get()), content_->widget());
  }

  RenderContext& context_;
  GRef<GtkWidget> scrolled_;
  std::unique_ptr<Element> content_;
};

/// A long text that can be selected, as wide as the view and padded on all sides: the toolkit's
/// text view does all of that and scrolls by itself, so a text of any length is laid out only
/// where it is seen.
struct SourceShape {
  ui::Text text;
  ui::Frame frame;
  ui::Padding padding;
};

std::optional<SourceShape> sourceShape(const ui::ScrollView& scroll) {
  const ui::View& view = *scroll.content;
  const auto* text = std::get_if<ui::Text>(&view.node);
  if (text == nullptr || !text->isSelectable || text->lineLimit || view.modifiers.size() != 2)
    return std::nullopt;
  const auto* frame = std::get_if<ui::Frame>(view.modifiers.data());
  const auto* padding = std::get_if<ui::Padding>(&view.modifiers[1]);
  if (frame == nullptr || padding == nullptr || padding->edges != ui::Edges::All ||
      frame->alignment != ui::HorizontalAlignment::Leading ||
      text->font != ui::Font{ui::TextStyle::Body, ui::FontDesign::Monospaced})
    return std::nullopt;
  return SourceShape{*text, *frame, *padding};
}

class SourceElement final : public NodeElement {
 public:
  SourceElement(const ui::ScrollView& scroll, const SourceShape& shape)
      : scrolled_(GRef<GtkWidget>::retain(newScrolledWindow(scroll.showsIndicators))) {
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled_.get()), source_.widget());
    setOverlaid(false);
    showShape(shape);
    map_ = std::make_unique<SignalHandler>(source_.widget(), "map",
                                           G_CALLBACK(&SourceElement::showWhenSeen), this);
  }

  GtkWidget* widget() const override { return scrolled_.get(); }
  bool update(const ui::Node& node) override {
    const auto& scroll = std::get<ui::ScrollView>(node);
    const std::optional<SourceShape> shape = sourceShape(scroll);
    if (!shape || scroll.showsIndicators != hasIndicators(scrolled_.get())) return false;
    showShape(*shape);
    return true;
  }
  ui::Node readBack() const override {
    auto* view = GTK_TEXT_VIEW(source_.widget());
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_bounds(source_.buffer(), &start, &end);
    char* content = gtk_text_buffer_get_text(source_.buffer(), &start, &end, FALSE);
    ui::Text text;
    text.text = std::string(content);
    g_free(content);
    text.isSelectable = true;  // every text view is
    if (gtk_text_view_get_monospace(view) == TRUE) text.font.design = ui::FontDesign::Monospaced;
    ui::View inner(text);
    inner.modifiers = {
        readFrame(),
        ui::Padding{ui::Edges::All, static_cast<double>(gtk_text_view_get_left_margin(view))}};
    return ui::ScrollView{hasIndicators(scrolled_.get()), ui::Content(inner)};
  }

 private:
  /// The view fills its scrolled window, and the text in it begins at one of its edges.
  ui::Frame readFrame() const {
    ui::Frame frame;
    if (gtk_widget_get_halign(source_.widget()) == GTK_ALIGN_FILL) frame.maxWidth = ui::kInfinity;
    using enum ui::HorizontalAlignment;
    switch (gtk_text_view_get_justification(GTK_TEXT_VIEW(source_.widget()))) {
      case GTK_JUSTIFY_RIGHT:
        frame.alignment = Trailing;
        break;
      case GTK_JUSTIFY_CENTER:
        frame.alignment = Center;
        break;
      default:
        frame.alignment = Leading;
    }
    return frame;
  }

  void showShape(const SourceShape& shape) {
    auto* view = GTK_TEXT_VIEW(source_.widget());
    const int margin = static_cast<int>(std::lround(shape.padding.length));
    gtk_text_view_set_left_margin(view, margin);
    gtk_text_view_set_right_margin(view, margin);
    gtk_text_view_set_top_margin(view, margin);
    gtk_text_view_set_bottom_margin(view, margin);
    if (shape.text.text != shape_.text.text) source_.setText(shape.text.text);
    shape_ = shape;
  }

  /// Bars that lie over the text come and go by degrees, for which the window is laid out anew all
  /// the time, also where nobody sees them.
  void setOverlaid(bool isOverlaid) {
    gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(scrolled_.get()),
                                              static_cast<gboolean>(isOverlaid));
  }
  /// A layer that is transparent is on screen for the toolkit, but nobody sees it.
  static void showWhenSeen(GtkWidget*, gpointer self) {
    auto* element = static_cast<SourceElement*>(self);
    if (GtkWidget* layer = transparentAncestor(element->source_.widget())) {
      element->shown_ = std::make_unique<SignalHandler>(
          layer, "notify::opacity", G_CALLBACK(&SourceElement::opacityChanged), element);
    } else {
      element->showText();
    }
  }
  static void opacityChanged(GtkWidget* layer, GParamSpec*, gpointer self) {
    if (gtk_widget_get_opacity(layer) > 0) static_cast<SourceElement*>(self)->showText();
  }
  void showText() {
    setOverlaid(true);
    source_.show();
    source_.fill();
  }

  GRef<GtkWidget> scrolled_;
  SourceText source_;
  SourceShape shape_;
  std::unique_ptr<SignalHandler> map_;
  std::unique_ptr<SignalHandler> shown_;
};

}  // namespace

std::unique_ptr<NodeElement> makeScrollView(const ui::ScrollView& scroll, RenderContext& context) {
  if (const auto shape = sourceShape(scroll))
    return std::make_unique<SourceElement>(scroll, *shape);
  return std::make_unique<ScrollElement>(scroll, context);
}

}  // namespace lumisk::desktop
