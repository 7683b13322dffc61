#include "desktop/script_value.h"

#include <memory>

#include "desktop/gref.h"

namespace lumisk::desktop {
namespace {

std::string text(JSCValue* value) {
  GBytes* bytes = jsc_value_to_string_as_bytes(value);
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
  std::string result(data, size);
  g_bytes_unref(bytes);
  return result;
}

ScriptValue scriptValue(JSCValue* value) {
  if (jsc_value_is_boolean(value)) return jsc_value_to_boolean(value) == TRUE;
  if (jsc_value_is_number(value)) return jsc_value_to_double(value);
  if (jsc_value_is_string(value)) return text(value);
  return ScriptOther{};
}

ScriptDictionary scriptDictionary(JSCValue* object) {
  ScriptDictionary dictionary;
  for (const std::string_view key : kMessageKeys) {
    const std::string name(key);
    if (jsc_value_object_has_property(object, name.c_str()) == FALSE) continue;
    const auto value = GRef<JSCValue>::adopt(jsc_value_object_get_property(object, name.c_str()));
    dictionary.emplace(name, scriptValue(value.get()));
  }
  return dictionary;
}

}  // namespace

ScriptMessageBody scriptMessageBody(JSCValue* value) {
  const bool isDictionary = jsc_value_is_object(value) && !jsc_value_is_array(value) &&
                            !jsc_value_is_function(value) && !jsc_value_is_array_buffer(value) &&
                            !jsc_value_is_typed_array(value);
  if (isDictionary) return scriptDictionary(value);
  return scriptValue(value);
}

}  // namespace lumisk::desktop
