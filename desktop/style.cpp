#include "desktop/style.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace lumisk::desktop {
namespace {

// A background's class states role and opacity in hundredths, so that one rule an opacity is
// written when it is first used: "background-window-95".
constexpr std::string_view kWindow = "background-window-";
constexpr std::string_view kText = "background-text-";
constexpr const char* kSafeAreas = "under-safe-areas";

constexpr const char* kStyleSheet = R"css(
.own-ground {
  background-color: @window_bg_color;
}
.source-text {
  background-color: transparent;
}
.source-text > text {
  background-color: transparent;
}
/* What was found is to be seen although the focus is in the find bar. */
.source-text > text > selection {
  background-color: alpha(@accent_bg_color, 0.35);
}
listview.plain-rows {
  background-color: transparent;
}
listview.plain-rows > row {
  padding: 2px 12px;
  border-radius: 0;
}
listview.plain-rows > row:hover,
listview.plain-rows > row:active {
  background-color: transparent;
}
.mode-picker > button {
  padding-top: 2px;
  padding-bottom: 2px;
  min-height: 24px;
  font-weight: normal;
}
spinner.at-rest {
  animation: none;
}
.find-count {
  font-feature-settings: "tnum";
}
)css";

void addRules(GdkDisplay* display, const std::string& rules) {
  GtkCssProvider* provider = gtk_css_provider_new();
  gtk_css_provider_load_from_data(provider, rules.data(), static_cast<gssize>(rules.size()));
  gtk_style_context_add_provider_for_display(display, GTK_STYLE_PROVIDER(provider),
                                             GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  g_object_unref(provider);
}

int hundredths(double opacity) { return static_cast<int>(std::lround(opacity * 100)); }

/// 95 as "0.95", in every locale.
std::string decimal(int hundredths) {
  const std::string fraction = std::to_string(hundredths % 100);
  return std::to_string(hundredths / 100) + (fraction.size() == 1 ? ".0" : ".") + fraction;
}

std::string backgroundClass(const ui::Background& background) {
  const bool isWindow = background.role == ui::BackgroundRole::Window;
  return std::string(isWindow ? kWindow : kText) + std::to_string(hundredths(background.opacity));
}

void ensureRule(GdkDisplay* display, const ui::Background& background) {
  const std::string name = backgroundClass(background);
  const std::string key = "lumisk-" + name;
  if (g_object_get_data(G_OBJECT(display), key.c_str()) != nullptr) return;
  g_object_set_data(G_OBJECT(display), key.c_str(), display);
  const bool isWindow = background.role == ui::BackgroundRole::Window;
  addRules(display, "." + name + " { background-color: alpha(" +
                        (isWindow ? "@window_bg_color" : "@view_bg_color") + ", " +
                        decimal(hundredths(background.opacity)) + "); }");
}

}  // namespace

void installStyle(GdkDisplay* display) {
  constexpr const char* kInstalled = "lumisk-style";
  if (g_object_get_data(G_OBJECT(display), kInstalled) != nullptr) return;
  g_object_set_data(G_OBJECT(display), kInstalled, display);
  addRules(display, kStyleSheet);
}

void setBackground(GtkWidget* widget, const ui::Background& background) {
  const std::string name = backgroundClass(background);
  ensureRule(gtk_widget_get_display(widget), background);
  const char* classes[] = {name.c_str(), background.extendsUnderSafeAreas ? kSafeAreas : nullptr,
                           nullptr};
  gtk_widget_set_css_classes(widget, classes);
}

ui::Background backgroundOf(GtkWidget* widget) {
  ui::Background background;
  char** classes = gtk_widget_get_css_classes(widget);
  for (char** name = classes; *name != nullptr; ++name) {
    const std::string_view text = *name;
    const bool isWindow = text.starts_with(kWindow);
    if (text == kSafeAreas) background.extendsUnderSafeAreas = true;
    if (!isWindow && !text.starts_with(kText)) continue;
    background.role = isWindow ? ui::BackgroundRole::Window : ui::BackgroundRole::Text;
    int value = 100;
    const std::string_view digits = text.substr((isWindow ? kWindow : kText).size());
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    background.opacity = value / 100.0;
  }
  g_strfreev(classes);
  return background;
}

}  // namespace lumisk::desktop
