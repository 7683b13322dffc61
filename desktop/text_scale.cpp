#include "desktop/text_scale.h"

namespace lumisk::desktop {

double textScale(GtkWidget* widget) {
  constexpr double kUsual = 96 * 1024;  // 1024ths of dots per inch
  int resolution = -1;
  g_object_get(gtk_widget_get_settings(widget), "gtk-xft-dpi", &resolution, nullptr);
  return resolution > 0 ? resolution / kUsual : 1;
}

}  // namespace lumisk::desktop
