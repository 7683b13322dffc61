#pragma once

#include <jsc/jsc.h>

#include "web/script_message.h"

namespace lumisk::desktop {

/// What a page's script posted, as plain values. Reads at most `kMostProperties` of a dictionary.
ScriptMessageBody scriptMessageBody(JSCValue* value);

inline constexpr std::size_t kMostProperties = 64;

}  // namespace lumisk::desktop
