#include "desktop/service/window_handle.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

namespace lumisk::desktop {

static void PrintTo(const WindowHandle& handle, std::ostream* out) {
  *out << static_cast<int>(handle.server) << ' ' << handle.xid << ' ' << handle.exported;
}

namespace {

WindowHandle x11(std::uint32_t xid) { return {.server = WindowHandle::Server::X11, .xid = xid}; }
WindowHandle wayland(std::string handle) {
  return {.server = WindowHandle::Server::Wayland, .exported = std::move(handle)};
}

TEST(WindowHandle, ReadsTheHandlesOfBothDisplayServers) {
  struct Row {
    const char* text;
    WindowHandle handle;
  };
  const Row rows[] = {
      {"x11:1", x11(1)},
      {"x11:3a00007", x11(0x3a00007)},
      {"x11:0000000f", x11(15)},
      {"x11:ffffffff", x11(0xffffffff)},
      {"wayland:abc", wayland("abc")},
      {"wayland:a:b c", wayland("a:b c")},
      {"wayland:6f1f6c9e-0d1f-4b57-93d5-1e5c2d1b2a3c",
       wayland("6f1f6c9e-0d1f-4b57-93d5-1e5c2d1b2a3c")},
  };
  for (const Row& row : rows) EXPECT_EQ(parseWindowHandle(row.text), row.handle) << row.text;
}

TEST(WindowHandle, AnythingElseIsNoWindow) {
  const std::string rows[] = {
      "",
      "x11",
      "x11:",
      "x11:0",
      "x11:00000000",
      "x11:0x3a00007",
      "x11:3A",
      "x11: 3a",
      "x11:3a ",
      "x11:-1",
      "x11:+1",
      "x11:123456789",
      "x11:g",
      "X11:3a",
      "wayland",
      "wayland:",
      "Wayland:abc",
      "3a00007",
      " x11:3a",
      "x11:3a\n",
      "mir:1",
      "x11:\xff",
      "x11:3a:3a",
      "wayland",
      "wayland:" + std::string(1025, 'a'),
  };
  for (const std::string& text : rows) EXPECT_EQ(parseWindowHandle(text), WindowHandle{}) << text;
}

TEST(WindowHandle, OlderCallersNumbersBecomeTheSameWindow) {
  EXPECT_EQ(windowHandleOfXid(0x3a00007), "x11:3a00007");
  EXPECT_EQ(windowHandleOfXid(0), "");
  EXPECT_EQ(windowHandleOfXid(-1), "");
  EXPECT_EQ(windowHandleOfXid(std::numeric_limits<std::int32_t>::min()), "");
  for (std::int32_t xid = 1; xid > 0 && xid < std::numeric_limits<std::int32_t>::max() / 3;
       xid *= 3) {
    EXPECT_EQ(parseWindowHandle(windowHandleOfXid(xid)), x11(static_cast<std::uint32_t>(xid)));
  }
}

}  // namespace
}  // namespace lumisk::desktop
