#include <adwaita.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "desktop/accessible_name.h"
#include "desktop/display_text.h"
#include "desktop/node_elements.h"
#include "desktop/texts.h"

// The kinds that hold nothing: text, image, spacer, divider, progress indicator.

namespace lumisk::desktop {
namespace {

constexpr int kUsualSpacerLength = 8;
constexpr int kSpinnerSize = 32;
/// A point of a layout is one of 96 to the inch, the desktop's one of 72. Given in the latter,
/// sizes follow the person's text scaling, at once when it changes.
constexpr double kDesktopPointsPerPoint = 0.75;

struct StyleClass {
  ui::TextStyle style;
  const char* name;
};
constexpr StyleClass kStyleClasses[] = {{ui::TextStyle::Headline, "heading"},
                                        {ui::TextStyle::Caption, "caption"}};

void setClass(GtkWidget* widget, const char* name, bool isOn) {
  if (isOn)
    gtk_widget_add_css_class(widget, name);
  else
    gtk_widget_remove_css_class(widget, name);
}

class TextElement final : public NodeElement {
 public:
  explicit TextElement(const ui::Text& text)
      : label_(GRef<GtkWidget>::retain(gtk_label_new(nullptr))) {
    gtk_label_set_xalign(label(), 0);
    showText(text);
  }

  GtkWidget* widget() const override { return label_.get(); }
  bool update(const ui::Node& node) override {
    const auto& text = std::get<ui::Text>(node);
    if (text != shown_) showText(text);
    return true;
  }
  ui::Node readBack() const override {
    ui::Text text;
    text.text = gtk_label_get_text(label());
    text.font = readFont();
    if (gtk_widget_has_css_class(label_.get(), "dim-label"))
      text.foreground = ui::ForegroundRole::Secondary;
    text.isSelectable = gtk_label_get_selectable(label()) == TRUE;
    if (gtk_label_get_ellipsize(label()) != PANGO_ELLIPSIZE_NONE)
      text.lineLimit = std::max(gtk_label_get_lines(label()), 1);
    return text;
  }

 private:
  GtkLabel* label() const { return GTK_LABEL(label_.get()); }

  void showText(const ui::Text& text) {
    const bool isOneLine = text.lineLimit == 1;
    const std::string shown =
        isOneLine ? displayLine(text.text.view()) : displayText(text.text.view());
    gtk_label_set_text(label(), shown.c_str());
    gtk_label_set_selectable(label(), text.isSelectable);
    gtk_label_set_wrap(label(), !isOneLine);
    gtk_label_set_wrap_mode(label(), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_lines(label(), text.lineLimit.value_or(-1));
    gtk_label_set_ellipsize(label(), text.lineLimit ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
    setClass(label_.get(), "dim-label", text.foreground == ui::ForegroundRole::Secondary);
    showFont(text.font);
    shown_ = text;
  }

  void showFont(const ui::Font& font) {
    const auto* style = std::get_if<ui::TextStyle>(&font.size);
    for (const auto& [kind, name] : kStyleClasses)
      setClass(label_.get(), name, style != nullptr && *style == kind);
    setClass(label_.get(), "monospace", font.design == ui::FontDesign::Monospaced);
    PangoAttrList* attributes = pango_attr_list_new();
    if (const auto* size = std::get_if<double>(&font.size))
      pango_attr_list_insert(attributes, pango_attr_size_new(static_cast<int>(std::lround(
                                             *size * kDesktopPointsPerPoint * PANGO_SCALE))));
    if (font.weight == ui::FontWeight::Bold)
      pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    gtk_label_set_attributes(label(), attributes);
    pango_attr_list_unref(attributes);
  }

  ui::Font readFont() const {
    ui::Font font;
    for (const auto& [kind, name] : kStyleClasses)
      if (gtk_widget_has_css_class(label_.get(), name)) font.size = kind;
    if (gtk_widget_has_css_class(label_.get(), "monospace"))
      font.design = ui::FontDesign::Monospaced;
    PangoAttrIterator* first = pango_attr_list_get_iterator(gtk_label_get_attributes(label()));
    if (PangoAttribute* size = pango_attr_iterator_get(first, PANGO_ATTR_SIZE))
      font.size = static_cast<double>(pango_attribute_as_size(size)->size) /
                  (kDesktopPointsPerPoint * PANGO_SCALE);
    if (pango_attr_iterator_get(first, PANGO_ATTR_WEIGHT) != nullptr)
      font.weight = ui::FontWeight::Bold;
    pango_attr_iterator_destroy(first);
    return font;
  }

  GRef<GtkWidget> label_;
  ui::Text shown_;
};

/// An icon beside its item's name says nothing that the name does not, so screen readers pass it.
class ImageElement final : public NodeElement {
 public:
  ImageElement(const ui::Image& image, std::optional<int> pixelSize, RenderContext& context)
      : context_(context),
        image_(GRef<GtkWidget>::retain(GTK_WIDGET(g_object_new(
            GTK_TYPE_IMAGE, "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr)))) {
    if (pixelSize) gtk_image_set_pixel_size(GTK_IMAGE(image_.get()), *pixelSize);
    showImage(image);
  }

  GtkWidget* widget() const override { return image_.get(); }
  bool update(const ui::Node& node) override {
    const auto& image = std::get<ui::Image>(node);
    if (image.isResizable != shown_.isResizable) return false;
    if (image != shown_) showImage(image);
    return true;
  }
  ui::Node readBack() const override {
    ui::Image image = shown_;
    const char* found = gtk_image_get_icon_name(GTK_IMAGE(image_.get()));
    const std::string name = found == nullptr ? "" : found;
    // The widget knows no path: it shows the item's icon if it shows the one that the item has.
    if (std::holds_alternative<ui::NamedIcon>(image.source) || name != iconName(shown_))
      image.source = ui::NamedIcon{name};
    image.isResizable = gtk_image_get_pixel_size(GTK_IMAGE(image_.get())) > 0;
    return image;
  }

 private:
  void showImage(const ui::Image& image) {
    gtk_image_set_from_icon_name(GTK_IMAGE(image_.get()), iconName(image).c_str());
    shown_ = image;
  }
  std::string iconName(const ui::Image& image) const {
    if (const auto* icon = std::get_if<ui::NamedIcon>(&image.source)) return icon->name;
    const auto& path = std::get<ui::FileIcon>(image.source).path;
    return context_.platform.icons.iconForFile(path, std::nullopt).name;
  }

  RenderContext& context_;
  GRef<GtkWidget> image_;
  ui::Image shown_;
};

class SpacerElement final : public NodeElement {
 public:
  SpacerElement(const ui::Spacer& spacer, Axis axis)
      : axis_(axis), box_(GRef<GtkWidget>::retain(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0))) {
    showSpacer(spacer);
  }

  GtkWidget* widget() const override { return box_.get(); }
  bool update(const ui::Node& node) override {
    showSpacer(std::get<ui::Spacer>(node));
    return true;
  }
  ui::Node readBack() const override {
    int width = 0;
    int height = 0;
    gtk_widget_get_size_request(box_.get(), &width, &height);
    const int length = std::max(width, height);
    ui::Spacer spacer;
    if (hasLength_ || length != kUsualSpacerLength) spacer.minLength = length;
    return spacer;
  }

 private:
  void showSpacer(const ui::Spacer& spacer) {
    hasLength_ = spacer.minLength.has_value();
    const int length = hasLength_ ? static_cast<int>(*spacer.minLength) : kUsualSpacerLength;
    gtk_widget_set_size_request(box_.get(), axis_ == Axis::Vertical ? -1 : length,
                                axis_ == Axis::Horizontal ? -1 : length);
  }

  Axis axis_;
  bool hasLength_ = false;
  GRef<GtkWidget> box_;
};

class DividerElement final : public NodeElement {
 public:
  explicit DividerElement(Axis axis)
      : line_(GRef<GtkWidget>::retain(gtk_separator_new(
            axis == Axis::Horizontal ? GTK_ORIENTATION_VERTICAL : GTK_ORIENTATION_HORIZONTAL))) {}

  GtkWidget* widget() const override { return line_.get(); }
  bool update(const ui::Node&) override { return true; }
  ui::Node readBack() const override { return ui::Divider{}; }

 private:
  GRef<GtkWidget> line_;
};

/// The wheel turns only once there is something to wait for: turning, it keeps the window drawing
/// while a page is made ready that is there in a moment, and lets the page's first frame wait for
/// the window's next one.
class ProgressElement final : public NodeElement {
 public:
  ProgressElement() : spinner_(GRef<GtkWidget>::retain(gtk_spinner_new())) {
    gtk_widget_set_size_request(spinner_.get(), kSpinnerSize, kSpinnerSize);
    gtk_widget_add_css_class(spinner_.get(), kAtRest);
    gtk_spinner_start(GTK_SPINNER(spinner_.get()));
    turn_.after(kMoment, [this] { gtk_widget_remove_css_class(spinner_.get(), kAtRest); });
    setAccessibleName(spinner_.get(), tr("panel.loading"));
    // It lies over the page: what is under it keeps its clicks.
    gtk_widget_set_can_target(spinner_.get(), FALSE);
  }

  GtkWidget* widget() const override { return spinner_.get(); }
  bool update(const ui::Node&) override { return true; }
  ui::Node readBack() const override { return ui::ProgressIndicator{}; }

 private:
  static constexpr const char* kAtRest = "at-rest";
  static constexpr unsigned kMoment = 500;  // milliseconds
  GRef<GtkWidget> spinner_;
  Deferred turn_;
};

}  // namespace

std::unique_ptr<NodeElement> makeText(const ui::Text& text) {
  return std::make_unique<TextElement>(text);
}

std::unique_ptr<NodeElement> makeImage(const ui::Image& image, std::optional<int> pixelSize,
                                       RenderContext& context) {
  return std::make_unique<ImageElement>(image, pixelSize, context);
}

std::unique_ptr<NodeElement> makeSpacer(const ui::Spacer& spacer, Axis axis) {
  return std::make_unique<SpacerElement>(spacer, axis);
}

std::unique_ptr<NodeElement> makeDivider(Axis axis) {
  return std::make_unique<DividerElement>(axis);
}

std::unique_ptr<NodeElement> makeProgressIndicator() { return std::make_unique<ProgressElement>(); }

}  // namespace lumisk::desktop
