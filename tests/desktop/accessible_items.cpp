#include "accessible_items.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "desktop/service/owned.h"

namespace lumisk::test {
namespace {

using desktop::ErrorSlot;
using desktop::GRef;
using desktop::OwnedVariant;

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
/// How Files calls each cell of its icon view; the cell holds the item under the file's name.
constexpr const char* kCellName = "NautilusGridCell";
/// Bits of the first word of an object's states.
constexpr guint32 kFocused = 1u << 12;
constexpr guint32 kSelected = 1u << 23;
constexpr guint32 kRelativeToWindow = 1;
constexpr std::size_t kMostNodes = 5000;

}  // namespace

AccessibleItems::AccessibleItems() {
  const auto session =
      GRef<GDBusConnection>::adopt(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  ErrorSlot error;
  const OwnedVariant answer(g_dbus_connection_call_sync(
      session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr,
      nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error));
  if (!answer) {
    ADD_FAILURE() << "no accessibility bus: " << error.message();
    return;
  }
  const char* address = nullptr;
  g_variant_get(answer.get(), "(&s)", &address);
  constexpr auto kFlags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  connection_ = GRef<GDBusConnection>::adopt(
      g_dbus_connection_new_for_address_sync(address, kFlags, nullptr, nullptr, &error));
  EXPECT_TRUE(connection_) << error.message();
}

/// Nothing when the object has gone meanwhile.
GVariant* AccessibleItems::call(const Node& node, const char* interface, const char* method,
                                GVariant* arguments) const {
  if (!connection_) return nullptr;
  return g_dbus_connection_call_sync(connection_.get(), node.bus.c_str(), node.path.c_str(),
                                     interface, method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                                     -1, nullptr, nullptr);
}

std::vector<AccessibleItems::Node> AccessibleItems::childrenOf(const Node& node) const {
  const OwnedVariant answer(call(node, kAccessible, "GetChildren", nullptr));
  std::vector<Node> children;
  if (!answer) return children;
  GVariantIter* each = nullptr;
  g_variant_get(answer.get(), "(a(so))", &each);
  const char* bus = nullptr;
  const char* path = nullptr;
  while (g_variant_iter_next(each, "(&s&o)", &bus, &path) != FALSE) children.push_back({bus, path});
  g_variant_iter_free(each);
  return children;
}

std::string AccessibleItems::nameOf(const Node& node) const {
  const OwnedVariant answer(call(node, "org.freedesktop.DBus.Properties", "Get",
                                 g_variant_new("(ss)", kAccessible, "Name")));
  if (!answer) return {};
  GVariant* name = nullptr;
  g_variant_get(answer.get(), "(v)", &name);
  const OwnedVariant owned(name);
  return g_variant_get_string(name, nullptr);
}

std::optional<AccessibleItems::Node> AccessibleItems::programNamed(const std::string& name) const {
  // The last of this name: the bus may still list one that has ended.
  std::optional<Node> latest;
  for (const Node& program :
       childrenOf({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}))
    if (nameOf(program) == name) latest = program;
  return latest;
}

ScreenPlace AccessibleItems::placeOf(const Node& node) const {
  const OwnedVariant answer(call(node, "org.a11y.atspi.Component", "GetExtents",
                                 g_variant_new("(u)", kRelativeToWindow)));
  ScreenPlace place;
  if (answer)
    g_variant_get(answer.get(), "((iiii))", &place.x, &place.y, &place.width, &place.height);
  return place;
}

AccessibleItem AccessibleItems::itemOf(const Node& cell, const Node& item) const {
  const OwnedVariant answer(call(cell, kAccessible, "GetState", nullptr));
  guint32 states = 0;
  if (answer) {
    const OwnedVariant words(g_variant_get_child_value(answer.get(), 0));
    if (g_variant_n_children(words.get()) > 0) g_variant_get_child(words.get(), 0, "u", &states);
  }
  return {.place = placeOf(item),
          .isSelected = (states & kSelected) != 0,
          .hasFocus = (states & kFocused) != 0};
}

std::optional<AccessibleItem> AccessibleItems::itemNamed(const std::string& program,
                                                         const std::string& name) const {
  const std::optional<Node> root = programNamed(program);
  if (!root) return std::nullopt;
  std::vector<Node> waiting = {*root};
  for (std::size_t count = 0; !waiting.empty() && count < kMostNodes; ++count) {
    const Node node = waiting.back();
    waiting.pop_back();
    const std::vector<Node> children = childrenOf(node);
    if (nameOf(node) == kCellName) {
      if (!children.empty() && nameOf(children.front()) == name)
        return itemOf(node, children.front());
    } else {
      waiting.insert(waiting.end(), children.begin(), children.end());
    }
  }
  return std::nullopt;
}

bool AccessibleItems::showsText(const std::string& program, const std::string& text) const {
  const std::optional<Node> root = programNamed(program);
  std::vector<Node> waiting;
  if (root) waiting.push_back(*root);
  for (std::size_t count = 0; !waiting.empty() && count < kMostNodes; ++count) {
    const Node node = waiting.back();
    waiting.pop_back();
    if (nameOf(node) == text) return true;
    const std::vector<Node> children = childrenOf(node);
    waiting.insert(waiting.end(), children.begin(), children.end());
  }
  return false;
}

std::optional<ScreenPlace> AccessibleItems::windowOf(const std::string& program) const {
  const std::optional<Node> root = programNamed(program);
  if (!root) return std::nullopt;
  const std::vector<Node> windows = childrenOf(*root);
  if (windows.empty()) return std::nullopt;
  return placeOf(windows.front());
}

}  // namespace lumisk::test
