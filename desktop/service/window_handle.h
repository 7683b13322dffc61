#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lumisk::desktop {

/// The window of another program that a preview belongs to, as the display server knows it.
struct WindowHandle {
  enum class Server { None, X11, Wayland };

  Server server = Server::None;
  std::uint32_t xid = 0;      ///< with X11: a window's id, never 0
  std::string exported = {};  ///< with Wayland: the handle under which the window was exported

  bool operator==(const WindowHandle&) const = default;
};

/// Reads "x11:3a00007" (lower-case hexadecimal digits, at most eight) or "wayland:" and a handle.
/// Anything else, "x11:0" and the empty string included, is no window: callers that have none send
/// such texts, and a preview without a parent is better than none.
WindowHandle parseWindowHandle(std::string_view text);

/// The text for the window `xid` that older callers send as a number: "" for 0 and for what no
/// window can be.
std::string windowHandleOfXid(std::int32_t xid);

}  // namespace lumisk::desktop
