#pragma once

namespace lumisk {

struct Arguments;

/// `lumisk open`: has the preview window show the items. Does not return when all is well: the
/// process becomes the previewer's, which hands over and ends. Otherwise returns the exit status.
int runOpen(const Arguments& arguments);

/// `lumisk snapshot`: becomes the previewer, which reads the words itself and writes the picture.
int runSnapshot(const Arguments& arguments);

}  // namespace lumisk
