#pragma once

namespace lumisk {

struct Arguments;

/// `lumisk page`: writes the page that the preview of a file shows to standard output, byte for
/// byte. Returns the exit status.
int runPage(const Arguments& arguments);

}  // namespace lumisk
