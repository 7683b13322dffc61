#include "support/outlines.h"

#include <filesystem>
#include <regex>

#include "support/files.h"
#include "ui/outline.h"

namespace lumisk::test {

std::string withoutPageContent(const std::string& outline, std::size_t pageLength) {
  const std::regex content("webpage length=" + std::to_string(pageLength) +
                           "( digest=[0-9a-f]{16})?(?= |\n)");
  return std::regex_replace(outline, content, "webpage length=PAGE");
}

void expectOutline(const ui::View& view, std::string_view name, std::size_t pageLength) {
  const std::string outline = withoutPageContent(ui::outline(view), pageLength);
  const auto folder = std::filesystem::path(LUMISK_SOURCE) / "tests" / "expected";
  expectFile(folder / (std::string(name) + ".outline"), outline);
}

}  // namespace lumisk::test
