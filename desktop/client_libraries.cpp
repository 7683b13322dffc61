#include "desktop/client_libraries.h"

#include <glib.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "core/page_template.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kManifest = "manifest.sha256";

/// A manifest's line is a hash, two blanks and a path.
std::string pathInLine(const std::string& line) {
  const std::size_t blanks = line.find("  ");
  return blanks == std::string::npos ? std::string() : line.substr(blanks + 2);
}

std::string fileUri(const std::string& path) {
  const std::unique_ptr<char, decltype(&g_free)> uri(
      g_filename_to_uri(path.c_str(), nullptr, nullptr), &g_free);
  return uri ? uri.get() : std::string();
}

}  // namespace

LibraryStore readLibraryStore(const std::string& folder) {
  std::error_code ignored;
  const std::filesystem::path root = std::filesystem::absolute(folder, ignored);
  LibraryStore store{std::string(kCdnHost), fileUri(root.string()), {}};
  std::ifstream manifest(root / kManifest);
  std::string line;
  const auto addIfThere = [&](const std::string& path) {
    if (!path.empty() && std::filesystem::is_regular_file(root / path, ignored))
      store.paths.push_back(path);
  };
  while (std::getline(manifest, line)) addIfThere(pathInLine(line));
  return store;
}

}  // namespace lumisk::desktop
