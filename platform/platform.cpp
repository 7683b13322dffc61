#include "platform/platform.h"

namespace lumisk {

bool isDarkMode(MainQueue& mainQueue, const Appearance& appearance) {
  if (mainQueue.isMainThread()) return appearance.bestMatch() == AppearanceMatch::Dark;
  bool isDark = false;
  mainQueue.sync([&] { isDark = appearance.bestMatch() == AppearanceMatch::Dark; });
  return isDark;
}

}  // namespace lumisk
