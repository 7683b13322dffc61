#pragma once

#include <string>
#include <string_view>

namespace lumisk {

/// Writes `text` to a new file and puts that in the place of `path`: at every moment, a crash
/// included, `path` is the old file or the new one, whole. A link at `path` is replaced, not
/// followed. Everybody may read the file. Returns 0 or an errno; after an error `path` is what it
/// was.
int writeFileAtomically(const std::string& path, std::string_view text);

}  // namespace lumisk
