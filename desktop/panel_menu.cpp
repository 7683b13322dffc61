#include "desktop/panel_menu.h"

#include <gio/gio.h>

#include <array>
#include <string>

#include "desktop/accessible_name.h"
#include "desktop/texts.h"

namespace lumisk::desktop {
namespace {

using Section = std::array<Command, 3>;
constexpr std::array kSections = {
    Section{Command::Find, Command::Print, Command::Reload},
    Section{Command::ZoomIn, Command::ZoomOut, Command::ZoomReset},
    Section{Command::FullScreen, Command::ShowShortcuts, Command::Close},
};

struct Performed {
  std::function<void(Command)> perform;
  Command command;
};

void activated(GSimpleAction*, GVariant*, gpointer data) {
  const auto* performed = static_cast<const Performed*>(data);
  performed->perform(performed->command);
}

void deletePerformed(gpointer data, GClosure*) { delete static_cast<Performed*>(data); }

void addAction(GSimpleActionGroup* group, Command command,
               const std::function<void(Command)>& perform) {
  GSimpleAction* action = g_simple_action_new(rowOf(command).action, nullptr);
  g_signal_connect_data(action, "activate", G_CALLBACK(activated), new Performed{perform, command},
                        deletePerformed, GConnectFlags(0));
  g_action_map_add_action(G_ACTION_MAP(group), G_ACTION(action));
  g_object_unref(action);
}

/// The key that the menu shows: the last, which is never one of the bare keys.
std::string shownAccelerator(const CommandRow& row) {
  const std::string all = row.accelerators;
  if (row.command == Command::ZoomIn) return all.substr(0, all.find(' '));
  return all.substr(all.rfind(' ') + 1);
}

void appendItem(GMenu* menu, Command command) {
  const CommandRow& row = rowOf(command);
  const std::string action = std::string("panel.") + row.action;
  GMenuItem* item = g_menu_item_new(tr(row.title), action.c_str());
  g_menu_item_set_attribute(item, "accel", "s", shownAccelerator(row).c_str());
  g_menu_append_item(menu, item);
  g_object_unref(item);
}

}  // namespace

PanelMenu::PanelMenu(GtkWidget* window, const std::function<void(Command)>& perform)
    : actions_(GRef<GSimpleActionGroup>::adopt(g_simple_action_group_new())),
      button_(GRef<GtkWidget>::retain(gtk_menu_button_new())) {
  const auto menu = GRef<GMenu>::adopt(g_menu_new());
  for (const Section& section : kSections) {
    const auto part = GRef<GMenu>::adopt(g_menu_new());
    for (const Command command : section) {
      addAction(actions_.get(), command, perform);
      appendItem(part.get(), command);
    }
    g_menu_append_section(menu.get(), nullptr, G_MENU_MODEL(part.get()));
  }
  gtk_widget_insert_action_group(window, "panel", G_ACTION_GROUP(actions_.get()));
  auto* button = GTK_MENU_BUTTON(button_.get());
  gtk_menu_button_set_icon_name(button, "open-menu-symbolic");
  gtk_menu_button_set_menu_model(button, G_MENU_MODEL(menu.get()));
  gtk_menu_button_set_primary(button, TRUE);  // F10 opens it
  setTooltipAndName(button_.get(), tr("panel.menu"));
  // It hands the focus to the button that it is made of.
  setAccessibleName(gtk_widget_get_first_child(button_.get()), tr("panel.menu"));
}

void PanelMenu::setEnabled(Command command, bool isEnabled) {
  GAction* const action =
      g_action_map_lookup_action(G_ACTION_MAP(actions_.get()), rowOf(command).action);
  g_simple_action_set_enabled(G_SIMPLE_ACTION(action), isEnabled);
}

}  // namespace lumisk::desktop
