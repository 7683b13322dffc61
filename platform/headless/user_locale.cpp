#include "platform/headless/user_locale.h"

#include <langinfo.h>

#include <string_view>

namespace lumisk {
namespace {

locale_t makeFallback() {
  const locale_t none = nullptr;
  const locale_t utf8 = newlocale(LC_ALL_MASK, "C.UTF-8", none);
  return utf8 != none ? utf8 : newlocale(LC_ALL_MASK, "C", none);
}

bool isUtf8(locale_t locale) { return std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8"; }

locale_t makeLocale(const char* name) {
  const locale_t none = nullptr;
  const locale_t wanted = newlocale(LC_ALL_MASK, name, none);
  if (wanted != none && isUtf8(wanted)) return wanted;
  const locale_t fallback = makeFallback();
  if (wanted == none) return fallback;
  freelocale(wanted);
  const locale_t withMessages = newlocale(LC_MESSAGES_MASK, name, fallback);
  return withMessages != none ? withMessages : fallback;
}

}  // namespace

UserLocale::UserLocale(const std::string& name) : locale_(makeLocale(name.c_str())) {}

UserLocale::~UserLocale() { freelocale(locale_); }

}  // namespace lumisk
