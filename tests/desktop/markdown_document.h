#pragma once

#include <string>

#include "core/markdown_page.h"

namespace lumisk::test {

inline std::string pageOf(const std::string& source, bool isDark = false) {
  return buildMarkdownPage(source, "file:///notes/", isDark);
}

inline std::string fence(const std::string& language, const std::string& text) {
  return "```" + language + "\n" + text + "\n```\n\n";
}

}  // namespace lumisk::test
