#include <gtk/gtk.h>

#include <memory>
#include <string>

#include "desktop/gtk_platform.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kGeneric = "text-x-generic";
constexpr const char* kFolder = "folder";

/// The first of `icon`'s names that the theme has. Beyond the screen, where there is no theme, the
/// last one, which is the most general.
std::string nameInTheme(GIcon* icon) {
  if (!G_IS_THEMED_ICON(icon)) return kGeneric;
  const char* const* names = g_themed_icon_get_names(G_THEMED_ICON(icon));
  GdkDisplay* display = gdk_display_get_default();
  GtkIconTheme* theme = display == nullptr ? nullptr : gtk_icon_theme_get_for_display(display);
  std::string last = kGeneric;
  for (const char* const* name = names; *name != nullptr; ++name) {
    last = *name;
    const bool isSymbolic = last.ends_with("-symbolic");
    if (!isSymbolic && theme != nullptr && gtk_icon_theme_has_icon(theme, *name) == TRUE)
      return last;
  }
  return theme == nullptr ? last : std::string(kGeneric);
}

std::string iconOfContentType(const char* type) {
  const auto icon = GRef<GIcon>::adopt(g_content_type_get_icon(type));
  return nameInTheme(icon.get());
}

/// Whether the folder may have an icon of its own: the home folder and the likes of Documents.
bool isSpecialFolder(const std::string& path) {
  if (path == g_get_home_dir()) return true;
  for (int i = 0; i < G_USER_N_DIRECTORIES; ++i) {
    const char* special = g_get_user_special_dir(static_cast<GUserDirectory>(i));
    if (special != nullptr && path == special) return true;
  }
  return false;
}

}  // namespace

/// By the name alone: the rows of a folder must not cost a look into each file, nor a search of the
/// theme each.
std::string GioIcons::iconOfName(const std::string& path) const {
  char* type = g_content_type_guess(path.c_str(), nullptr, 0, nullptr);
  std::string& name = iconOfType_[type];
  if (name.empty()) name = iconOfContentType(type);
  g_free(type);
  return name;
}

Icon GioIcons::iconForFile(std::string_view path, std::optional<bool> isDirectory) const {
  const std::string text(path);
  if (isDirectory == false) return {iconOfName(text)};
  if (isDirectory == true && !isSpecialFolder(text)) return {kFolder};
  const auto file = GRef<GFile>::adopt(g_file_new_for_path(text.c_str()));
  const auto info = GRef<GFileInfo>::adopt(g_file_query_info(
      file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON "," G_FILE_ATTRIBUTE_STANDARD_TYPE,
      G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
  if (!info) return {isDirectory.value_or(false) ? kFolder : iconOfName(text)};
  GIcon* icon = g_file_info_get_icon(info.get());
  return {icon == nullptr ? std::string(kGeneric) : nameInTheme(icon)};
}

}  // namespace lumisk::desktop
