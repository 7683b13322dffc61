#pragma once

#include <string>
#include <vector>

namespace lumisk::desktop {

/// What became of a request to the running previewer.
enum class HandOver {
  Done,
  NoBus,   ///< there is no session bus; whoever asks has to show the items itself
  Failed,  ///< there is a bus, but no previewer could be reached or started; it was complained of
};

/// Has the running previewer show `uris`, after starting one if there is none: by the bus if it
/// knows how, else directly, as a process of its own that outlives this one.
HandOver handOver(const std::vector<std::string>& uris);

/// Has the bus look at its service files again. Nothing when there is no bus.
void reloadBus();

}  // namespace lumisk::desktop
