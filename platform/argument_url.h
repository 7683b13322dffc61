#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/file_url.h"

namespace lumisk {

/// The item that a person names on a command line: a path, relative to the current directory, or a
/// "file:" URI. Nothing when it is a URI that names no file on this machine. (A file whose name
/// begins with "file:" is written "./file:…".)
std::optional<FileURL> fileURLOfArgument(std::string_view argument);

/// Whether a person names something by a URI that is no "file:" URI, such as "trash:///x", which
/// the desktop may be able to look up. A name like "a:/b" that is there is a path.
bool isAddressOfAnotherKind(const std::string& argument);

/// The URI of what a person names by a path or by any URI. Nothing when it is a "file:" URI that
/// names no file on this machine, or a URI of another kind that is no UTF-8: a message of the bus
/// holds text alone, and would arrive without it.
std::optional<std::string> addressOfArgument(const std::string& argument);

}  // namespace lumisk
