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

/// Tells which request of a page an installed file answers. Exact URLs only: another version,
/// another host, a query or a fragment is a different resource and goes to the network.
class LibraryMap {
 public:
  explicit LibraryMap(LibraryStore store);

  /// The file URL to load in place of `requestUri`; nothing when the request is none of the store's
  /// business.
  std::optional<std::string> installedFile(std::string_view requestUri) const;

  /// Whether `requestUri` is the diagram library, and the page at `pageUri`, which asks for it, has
  /// no use for it. Whoever loads nothing then keeps nothing in the library's place: the engine
  /// remembers what came by the URL that the page wrote.
  bool isSpared(std::string_view requestUri, std::string_view pageUri) const;

 private:
  std::optional<std::string> installedPath(std::string_view requestUri) const;

  std::string prefix_;
  std::string storeUri_;
  std::unordered_set<std::string> paths_;
};

}  // namespace lumisk::desktop
