#include "desktop/shortcuts_window.h"

#include <string>
#include <utility>

#include "desktop/commands.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

struct GroupTitle {
  CommandGroup group;
  TextKey title;
};
constexpr GroupTitle kGroups[] = {{CommandGroup::General, "group.general"},
                                  {CommandGroup::Document, "group.document"},
                                  {CommandGroup::View, "group.view"},
                                  {CommandGroup::Scrolling, "group.scrolling"}};

/// Two columns then hold them all, without pages to turn.
constexpr const char* kRowsInAColumn = "16";

std::string escaped(const char* text) {
  char* safe = g_markup_escape_text(text, -1);
  std::string result = safe;
  g_free(safe);
  return result;
}

std::string property(const char* name, const std::string& value) {
  return std::string("<property name=\"") + name + "\">" + value + "</property>";
}

std::string object(const char* type, const std::string& content) {
  return std::string("<child><object class=\"") + type + "\">" + content + "</object></child>";
}

std::string groupDefinition(const GroupTitle& group) {
  std::string content = property("title", escaped(tr(group.title)));
  for (const CommandRow& row : commandRows()) {
    if (row.group != group.group) continue;
    content +=
        object("GtkShortcutsShortcut", property("title", escaped(tr(row.title))) +
                                           property("accelerator", escaped(row.accelerators)));
  }
  return object("GtkShortcutsGroup", content);
}

/// The toolkit of this version takes shortcuts from a definition in XML only.
std::string windowDefinition() {
  std::string groups = property("section-name", "panel") + property("max-height", kRowsInAColumn);
  for (const GroupTitle& group : kGroups) groups += groupDefinition(group);
  return "<interface><object class=\"GtkShortcutsWindow\" id=\"window\">" + property("modal", "1") +
         object("GtkShortcutsSection", groups) + "</object></interface>";
}

}  // namespace

void ShortcutsWindow::show(GtkWindow* parent) {
  close();
  const std::string definition = windowDefinition();
  GtkBuilder* builder =
      gtk_builder_new_from_string(definition.data(), static_cast<gssize>(definition.size()));
  window_ = GTK_WINDOW(gtk_builder_get_object(builder, "window"));
  g_object_add_weak_pointer(G_OBJECT(window_), weakPointer());
  gtk_window_set_transient_for(window_, parent);
  gtk_window_present(window_);
  g_object_unref(builder);
}

void ShortcutsWindow::close() {
  if (window_ == nullptr) return;
  g_object_remove_weak_pointer(G_OBJECT(window_), weakPointer());
  gtk_window_destroy(std::exchange(window_, nullptr));
}

}  // namespace lumisk::desktop
