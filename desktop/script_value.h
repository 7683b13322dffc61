#pragma once

#include <jsc/jsc.h>

#include "web/script_message.h"

namespace lumisk::desktop {

/// What a page's script posted, as plain values. Of a dictionary the keys that messages have.
ScriptMessageBody scriptMessageBody(JSCValue* value);

}  // namespace lumisk::desktop
