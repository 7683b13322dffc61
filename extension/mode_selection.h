#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/view.h"

namespace lumisk {

/// The names by which a person may call the modes that `body` offers, in the order of the segments
/// ("rendered", "source"); empty when there is no choice.
std::vector<std::string> modeNames(const ui::View& body);

/// Chooses the mode of this name as if its segment had been pressed. A mode answers to its own
/// name, to its raw value, and the raw text of a document to both "source" and "text". False when
/// `body` offers no such mode.
bool selectMode(const ui::View& body, std::string_view name);

}  // namespace lumisk
