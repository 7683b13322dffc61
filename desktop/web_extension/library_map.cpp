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

std::optional<std::string> LibraryMap::installedFile(std::string_view requestUri,
                                                     std::string_view pageUri) const {
  if (!requestUri.starts_with(prefix_)) return std::nullopt;
  const std::string path(requestUri.substr(prefix_.size()));
  if (!paths_.contains(path)) return std::nullopt;
  const bool inert = path.ends_with(kDiagramLibrary) && isWithoutDiagrams(pageUri) &&
                     paths_.contains(std::string(kInertDiagramLibrary));
  return storeUri_ + "/" + (inert ? std::string(kInertDiagramLibrary) : path);
}

}  // namespace lumisk::desktop
