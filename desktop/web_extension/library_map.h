#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace lumisk::desktop {

/// The client libraries that are installed, as the host tells the web process about them.
struct LibraryStore {
  std::string cdnHost;
  /// The folder's file URL, without a slash at the end.
  std::string storeUri;
  /// What it holds: each path is a URL's path without its leading slash, and the path below the
  /// folder as well.
  std::vector<std::string> paths;
};

/// The file of the store that stands in for the diagram library on pages without a diagram.
inline constexpr std::string_view kInertDiagramLibrary = "inert_mermaid.js";

/// Tells which request of a page an installed file answers. Exact URLs only: another version,
/// another host, a query or a fragment is a different resource and goes to the network.
class LibraryMap {
 public:
  explicit LibraryMap(LibraryStore store);

  /// The file URL to load in place of `requestUri`, asked for by the page at `pageUri`; nothing
  /// when the request is none of the store's business.
  std::optional<std::string> installedFile(std::string_view requestUri,
                                           std::string_view pageUri) const;

 private:
  std::string prefix_;
  std::string storeUri_;
  std::unordered_set<std::string> paths_;
};

}  // namespace lumisk::desktop
