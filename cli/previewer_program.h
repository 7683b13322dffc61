#pragma once

#include <optional>
#include <string>

namespace lumisk {

/// The path of the previewer, which is no program of a person's $PATH: beside this command, in the
/// same installation or build, else where the build was told to install it. Nothing when it is in
/// neither place.
std::optional<std::string> findPreviewer();

/// Says on standard error that there is no previewer.
void complainOfNoPreviewer();

}  // namespace lumisk
