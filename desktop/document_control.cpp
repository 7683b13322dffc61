#include "desktop/document_control.h"

#include <cmath>
#include <functional>
#include <string>

#include "desktop/beginning_first.h"
#include "desktop/host_scripts.h"

namespace lumisk::desktop {
namespace {

constexpr double kPixelsOfATurn = 50;  // of a touchpad, that zoom as much as a wheel's notch
constexpr int kLine = 40;              // pixels
constexpr int kPagePercent = 90;       // so that the last line is seen again

/// Long lines of a page scroll within what holds them: what is nearest to the middle of the view
/// and has something to scroll is moved, else the page. An element may bear the name of one of the
/// document's functions and would then be found in its place; hence the prototype's own.
constexpr const char* kScrollSideways = R"js(
  ((step) => {
    const elementAt = Document.prototype.elementFromPoint;
    const scrolls = (element) => !['body', 'html'].includes(element.localName) &&
        element.scrollWidth > element.clientWidth &&
        ['auto', 'scroll'].includes(getComputedStyle(element).overflowX);
    const scrollingAt = (y) => {
      let element = elementAt.call(document, innerWidth / 2, y);
      while (element && !scrolls(element)) element = element.parentElement;
      return element;
    };
    const middle = innerHeight / 2;
    const steps = 24;
    let found = null;
    for (let i = 0; i < steps && !found; ++i)
      found = scrollingAt(middle - i * middle / steps) || scrollingAt(middle + i * middle / steps);
    (found || window).scrollBy(step, 0);
  }))js";

std::string scriptFor(ScrollStep step) {
  const std::string line = std::to_string(kLine);
  const std::string page = "innerHeight * " + std::to_string(kPagePercent) + " / 100";
  switch (step) {
    case ScrollStep::LineUp:
      return "scrollBy(0, -" + line + ")";
    case ScrollStep::LineDown:
      return "scrollBy(0, " + line + ")";
    case ScrollStep::LineLeft:
      return kScrollSideways + ("(-" + line + ")");
    case ScrollStep::LineRight:
      return kScrollSideways + ("(" + line + ")");
    case ScrollStep::PageUp:
      return "scrollBy(0, -" + page + ")";
    case ScrollStep::PageDown:
      return "scrollBy(0, " + page + ")";
    case ScrollStep::ToStart:
      return "scrollTo(0, 0)";
    case ScrollStep::ToEnd:
      return "scrollTo(0, document.documentElement.scrollHeight)";
  }
  return "";
}

void scrollWindow(GtkScrolledWindow* scrolled, ScrollStep step) {
  const bool isSideways = step == ScrollStep::LineLeft || step == ScrollStep::LineRight;
  GtkAdjustment* adjustment = isSideways ? gtk_scrolled_window_get_hadjustment(scrolled)
                                         : gtk_scrolled_window_get_vadjustment(scrolled);
  const double page = gtk_adjustment_get_page_size(adjustment) * kPagePercent / 100;
  double value = gtk_adjustment_get_value(adjustment);
  switch (step) {
    case ScrollStep::LineUp:
    case ScrollStep::LineLeft:
      value -= kLine;
      break;
    case ScrollStep::LineDown:
    case ScrollStep::LineRight:
      value += kLine;
      break;
    case ScrollStep::PageUp:
      value -= page;
      break;
    case ScrollStep::PageDown:
      value += page;
      break;
    case ScrollStep::ToStart:
      value = gtk_adjustment_get_lower(adjustment);
      break;
    case ScrollStep::ToEnd:
      value = gtk_adjustment_get_upper(adjustment);
      break;
  }
  gtk_adjustment_set_value(adjustment, value);
}

void forEachBelow(GtkWidget* widget, const std::function<void(GtkWidget*)>& visit) {
  visit(widget);
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    forEachBelow(child, visit);
}

void zoomText(GtkWidget* view, double zoom) {
  constexpr const char* kProvider = "lumisk-zoom";
  auto* provider = static_cast<GtkCssProvider*>(g_object_get_data(G_OBJECT(view), kProvider));
  if (provider == nullptr) {
    provider = gtk_css_provider_new();
    gtk_style_context_add_provider(gtk_widget_get_style_context(view), GTK_STYLE_PROVIDER(provider),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION + 1);
    g_object_set_data_full(G_OBJECT(view), kProvider, provider, g_object_unref);
  }
  const int percent = static_cast<int>(std::lround(zoom * 100));
  const std::string rule = "* { font-size: " + std::to_string(percent) + "%; }";
  gtk_css_provider_load_from_data(provider, rule.data(), static_cast<gssize>(rule.size()));
}

}  // namespace

void scroll(const ShownDocument& shown, ScrollStep step) {
  if (shown.page != nullptr) {
    if (step == ScrollStep::ToEnd) showAll(shown.page);
    runInPage(shown.page, scriptFor(step));
  } else if (shown.scrolled != nullptr) {
    scrollWindow(shown.scrolled, step);
  }
}

void copySelection(const ShownDocument& shown) {
  if (shown.page != nullptr)
    webkit_web_view_execute_editing_command(shown.page, WEBKIT_EDITING_COMMAND_COPY);
  else if (shown.text != nullptr)
    g_signal_emit_by_name(shown.text, "copy-clipboard");
}

double zoomFactor(double turn, GdkScrollUnit unit) {
  return std::pow(kZoomStep, unit == GDK_SCROLL_UNIT_WHEEL ? -turn : -turn / kPixelsOfATurn);
}

void setZoom(GtkWidget* root, double zoom) {
  forEachBelow(root, [zoom](GtkWidget* widget) {
    if (WEBKIT_IS_WEB_VIEW(widget)) webkit_web_view_set_zoom_level(WEBKIT_WEB_VIEW(widget), zoom);
    if (GTK_IS_TEXT_VIEW(widget)) zoomText(widget, zoom);
  });
}

}  // namespace lumisk::desktop
