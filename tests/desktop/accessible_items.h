#pragma once

#include <gio/gio.h>

#include <optional>
#include <string>
#include <vector>

#include "desktop/gref.h"
#include "x_desktop.h"

namespace lumisk::test {

/// One item of a file manager's icon view, as assistive technology is told of it.
struct AccessibleItem {
  /// Within the window, without the shadow around it.
  ScreenPlace place;
  bool isSelected = false;
  bool hasFocus = false;
};

/// Looks into other programs by the accessibility bus. What is on the screen says when a program is
/// ready for a key; a window that is there may still be reading its folder.
class AccessibleItems {
 public:
  AccessibleItems();

  /// The item under this name, once the program shows it.
  std::optional<AccessibleItem> itemNamed(const std::string& program,
                                          const std::string& name) const;
  /// Whether the program shows exactly this text somewhere.
  bool showsText(const std::string& program, const std::string& text) const;
  /// The size of the program's first window, without the shadow around it.
  std::optional<ScreenPlace> windowOf(const std::string& program) const;

 private:
  struct Node {
    std::string bus;
    std::string path;
    bool operator==(const Node&) const = default;
  };
  GVariant* call(const Node& node, const char* interface, const char* method,
                 GVariant* arguments) const;
  std::vector<Node> childrenOf(const Node& node) const;
  std::string nameOf(const Node& node) const;
  std::optional<Node> programNamed(const std::string& name) const;
  ScreenPlace placeOf(const Node& node) const;
  AccessibleItem itemOf(const Node& cell, const Node& item) const;

  desktop::GRef<GDBusConnection> connection_;
};

}  // namespace lumisk::test
