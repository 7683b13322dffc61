#include "desktop/presentation.h"

#include <utility>

#include "desktop/style.h"
#include "extension/mode_selection.h"

namespace lumisk::desktop {

Presentation::Presentation(RenderContext& context)
    : controller_(context.platform), root_(GRef<GtkWidget>::retain(gtk_overlay_new())) {
  paintRoot();
}

Presentation::Presentation(const FileURL& url, RenderContext& context) : Presentation(context) {
  controller_.preparePreviewOfFile(url, [this](const auto& error) { error_ = error; });
  showChildren(context, HostedWidget::Appearing::Now);
}

Presentation::Presentation(PreparedPreview prepared, RenderContext& context)
    : Presentation(context) {
  if (prepared.page) context.webViews.offer(*std::move(prepared.page));
  controller_.takePreparedFile(std::move(prepared.preview),
                               [this](const auto& error) { error_ = error; });
  showChildren(context, HostedWidget::Appearing::Already);
}

void Presentation::showChildren(RenderContext& context, HostedWidget::Appearing appearing) {
  for (const auto& child : controller_.children()) {
    contents_.push_back(std::make_unique<HostedWidget>(child->view, context, appearing));
    contents_.back()->onChanged = [this] {
      if (onChanged) onChanged();
    };
    GtkWidget* widget = contents_.back()->widget();
    gtk_widget_set_hexpand(widget, TRUE);
    gtk_widget_set_vexpand(widget, TRUE);
    gtk_overlay_add_overlay(GTK_OVERLAY(root_.get()), widget);
    // What holds no page, as a folder, follows the appearance, and its texts would be written on
    // the root's colour.
    if (findShownDocument(widget).page == nullptr) gtk_widget_add_css_class(widget, "own-ground");
  }
}

Presentation::~Presentation() {
  for (const auto& content : contents_)
    gtk_overlay_remove_overlay(GTK_OVERLAY(root_.get()), content->widget());
}

/// The colour of the moment, which stays: it is to match the page, which keeps its colours too.
void Presentation::paintRoot() {
  GdkRGBA colour{};
  GtkStyleContext* style = gtk_widget_get_style_context(root_.get());
  if (gtk_style_context_lookup_color(style, "window_bg_color", &colour) == FALSE) return;
  char* text = gdk_rgba_to_string(&colour);
  const std::string rule = "* { background-color: " + std::string(text) + "; }";
  g_free(text);
  GtkCssProvider* provider = gtk_css_provider_new();
  gtk_css_provider_load_from_data(provider, rule.data(), static_cast<gssize>(rule.size()));
  gtk_style_context_add_provider(style, GTK_STYLE_PROVIDER(provider),
                                 GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  g_object_unref(provider);
}

const HostedWidget* Presentation::content() const {
  return contents_.empty() ? nullptr : contents_.back().get();
}

const ui::HostedView* Presentation::view() const {
  return controller_.children().empty() ? nullptr : &controller_.children().back()->view;
}

bool Presentation::selectMode(std::string_view name) const {
  return content() != nullptr && lumisk::selectMode(ui::View(content()->body()), name);
}

namespace {

void findIn(GtkWidget* widget, ShownDocument& found) {
  if (WEBKIT_IS_WEB_VIEW(widget)) {
    found.page = WEBKIT_WEB_VIEW(widget);
    return;
  }
  if (gtk_widget_get_opacity(widget) <= 0) return;
  if (GTK_IS_TEXT_VIEW(widget)) found.text = GTK_TEXT_VIEW(widget);
  if (GTK_IS_SCROLLED_WINDOW(widget)) found.scrolled = GTK_SCROLLED_WINDOW(widget);
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    findIn(child, found);
}

}  // namespace

void keepFocusOutOfHelpers(WebKitWebView* page) {
  for (GtkWidget* child = gtk_widget_get_first_child(GTK_WIDGET(page)); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    if (GTK_IS_TEXT_VIEW(child)) gtk_widget_set_can_focus(child, FALSE);
}

ShownDocument findShownDocument(GtkWidget* root) {
  ShownDocument found;
  findIn(root, found);
  return found;
}

}  // namespace lumisk::desktop
