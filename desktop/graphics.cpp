#include "desktop/graphics.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace lumisk::desktop {
namespace {

namespace fs = std::filesystem;

/// Drivers without a render node: one vendor's own, and a guest's of another system.
constexpr const char* kOtherDevices[] = {"nvidiactl", "dxg"};

bool isToldNotTo() {
  const char* told = g_getenv("LIBGL_ALWAYS_SOFTWARE");
  return told != nullptr && (std::string_view(told) == "1" || std::string_view(told) == "true");
}

}  // namespace

bool hasGraphicsCard(const std::string& devices) {
  if (isToldNotTo()) return false;
  std::error_code error;
  for (const char* device : kOtherDevices)
    if (fs::exists(fs::path(devices) / device, error)) return true;
  const fs::directory_iterator nodes(fs::path(devices) / "dri", error);
  return std::any_of(begin(nodes), end(nodes), [](const fs::directory_entry& node) {
    return node.path().filename().string().starts_with("renderD");
  });
}

void drawInSoftware(GdkDisplay* display) {
  // What the environment's GSK_RENDERER would say, but not to the programs that we start.
  if (g_getenv("GSK_RENDERER") == nullptr)
    g_object_set_data(G_OBJECT(display), "gsk-renderer", const_cast<char*>("cairo"));
}

}  // namespace lumisk::desktop
