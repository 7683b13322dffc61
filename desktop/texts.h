#pragma once

#include <glib.h>

#include <string>

namespace lumisk::desktop {

/// The panel's own text in the person's language. The English text is the key.
inline const char* tr(const char* text) { return g_dgettext("lumisk", text); }

/// `format` has one `%s`, which a translation may move but not drop.
inline std::string trWith(const char* format, const std::string& value) {
  std::string text = tr(format);
  const std::size_t slot = text.find("%s");
  return slot == std::string::npos ? text : text.replace(slot, 2, value);
}

}  // namespace lumisk::desktop
