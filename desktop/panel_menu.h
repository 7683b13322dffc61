#pragma once

#include <gtk/gtk.h>

#include <functional>

#include "desktop/commands.h"
#include "desktop/gref.h"

namespace lumisk::desktop {

/// The panel's menu button and the actions of its items, in the group "panel" of `window`.
class PanelMenu {
 public:
  /// `perform` is called for the item that was chosen.
  PanelMenu(GtkWidget* window, const std::function<void(Command)>& perform);

  GtkWidget* button() const { return button_.get(); }
  /// An item that can do nothing for what is shown is greyed.
  void setEnabled(Command command, bool isEnabled);

 private:
  GRef<GSimpleActionGroup> actions_;
  GRef<GtkWidget> button_;
};

}  // namespace lumisk::desktop
