#pragma once

namespace lumisk {

struct Arguments;

/// `lumisk describe`: writes the outline of the preview of an item to standard output, as a person
/// sees it in the end: after it has appeared and all that its appearance set off has landed.
/// Returns the exit status.
int runDescribe(const Arguments& arguments);

}  // namespace lumisk
