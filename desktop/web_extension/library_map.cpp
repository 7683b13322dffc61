#include "desktop/web_extension/library_map.h"

#include "desktop/web_extension/page_address.h"

namespace lumisk::desktop {
namespace {

constexpr std::string_view kDiagramLibrary = "/mermaid.min.js";

}  // namespace

LibraryMap::LibraryMap(LibraryStore store)
    : prefix_("https://" + store.cdnHost + "/"),
      storeUri_(std::move(store.storeUri)),
      paths_(store.paths.begin(), store.paths.end()) {}

std::optional<std::string> LibraryMap::installedPath(std::string_view requestUri) const {
  if (!requestUri.starts_with(prefix_)) return std::nullopt;
  const std::string path(requestUri.substr(prefix_.size()));
  return paths_.contains(path) ? std::optional(path) : std::nullopt;
}

std::optional<std::string> LibraryMap::installedFile(std::string_view requestUri) const {
  const auto path = installedPath(requestUri);
  return path ? std::optional(storeUri_ + "/" + *path) : std::nullopt;
}

bool LibraryMap::isSpared(std::string_view requestUri, std::string_view pageUri) const {
  const auto path = installedPath(requestUri);
  return path && path->ends_with(kDiagramLibrary) && isWithoutDiagrams(pageUri);
}

}  // namespace lumisk::desktop
