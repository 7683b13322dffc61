#pragma once

namespace lumisk {

struct Arguments;

/// `lumisk integrate`: makes Lumisk the previewer that file managers start for this person, takes
/// that back, or says how things stand. Writes and removes only files that carry its own mark.
/// Returns the exit status.
int runIntegrate(const Arguments& arguments);

}  // namespace lumisk
