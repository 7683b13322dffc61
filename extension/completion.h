#pragma once

#include <functional>
#include <optional>

#include "core/error_record.h"

namespace lumisk {

/// The host's answer to a finished request: called exactly once, with nothing when the view stands
/// embedded, else with what went wrong.
using Completion = std::function<void(const std::optional<ErrorRecord>& error)>;

}  // namespace lumisk
