#pragma once

#include <optional>
#include <string>

namespace lumisk::desktop::test {

/// What the desktop's virtual file system knows of an item that is no file of this machine.
struct RemoteItem {
  /// Where programs that know nothing of the file system can read it.
  std::string path = {};
  /// The address of what the item stands for.
  std::string target = {};
  /// An error of the domain `G_IO_ERROR`, in place of an answer.
  std::optional<int> error = {};
};

/// Has the virtual file system answer this for every address of the scheme, for the rest of the
/// program. Once for each scheme.
void offerRemoteItem(const char* scheme, RemoteItem item);

}  // namespace lumisk::desktop::test
