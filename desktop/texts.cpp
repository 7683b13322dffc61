#include "desktop/texts.h"

#include <libintl.h>

#include "folder/message.h"

namespace lumisk::desktop {
namespace {

constexpr const char* kDomain = "lumisk";

}  // namespace

// A look-up that finds nothing returns the very string it was asked for.

const char* tr(TextKey key) {
  const PanelText& text = key.text();
  const char* found = dgettext(kDomain, text.key);
  return found == text.key ? text.singular : found;
}

std::string trWith(TextKey key, const std::string& value) { return formatMessage(tr(key), value); }

std::string trCount(TextKey key, long long count) {
  const PanelText& text = key.text();
  const auto number = static_cast<unsigned long>(count);
  const char* found = dngettext(kDomain, text.key, text.key, number);
  if (found == text.key)
    found = number == 1 || text.plural == nullptr ? text.singular : text.plural;
  return formatMessage(found, std::to_string(count));
}

}  // namespace lumisk::desktop
