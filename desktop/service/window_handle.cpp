#include "desktop/service/window_handle.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace lumisk::desktop {

namespace {

constexpr std::string_view kX11 = "x11:";
constexpr std::string_view kWayland = "wayland:";
constexpr std::size_t kLongestXid = 8;
/// Compositors hand out short tokens; what is much longer comes from no compositor.
constexpr std::size_t kLongestExported = 1024;
constexpr int kHexadecimal = 16;

bool isLowerCaseHex(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); }

WindowHandle parseXid(std::string_view digits) {
  if (digits.empty() || digits.size() > kLongestXid) return {};
  if (!std::all_of(digits.begin(), digits.end(), isLowerCaseHex)) return {};
  std::uint32_t xid = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), xid, kHexadecimal);
  if (xid == 0) return {};
  return {.server = WindowHandle::Server::X11, .xid = xid};
}

WindowHandle parseExported(std::string_view handle) {
  if (handle.empty() || handle.size() > kLongestExported) return {};
  return {.server = WindowHandle::Server::Wayland, .exported = std::string(handle)};
}

}  // namespace

WindowHandle parseWindowHandle(std::string_view text) {
  if (text.starts_with(kX11)) return parseXid(text.substr(kX11.size()));
  if (text.starts_with(kWayland)) return parseExported(text.substr(kWayland.size()));
  return {};
}

std::string windowHandleOfXid(std::int32_t xid) {
  // The protocol keeps the three highest bits of every id zero.
  if (xid <= 0) return {};
  std::array<char, kLongestXid> digits = {};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), xid, kHexadecimal);
  return std::string(kX11) + std::string(digits.data(), end.ptr);
}

}  // namespace lumisk::desktop
