#pragma once

#include <optional>
#include <string_view>

#include "core/file_url.h"

namespace lumisk {

/// The item that a person names on a command line: a path, relative to the current directory, or a
/// "file:" URI. Nothing when it is a URI that names no file on this machine. (A file whose name
/// begins with "file:" is written "./file:…".)
std::optional<FileURL> fileURLOfArgument(std::string_view argument);

}  // namespace lumisk
