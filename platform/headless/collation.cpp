#include "platform/headless/collation.h"

#include <cstring>
#include <cwctype>

#include "core/utf8.h"

namespace lumisk {
namespace {

char32_t lower(char32_t point, locale_t locale) {
  return static_cast<char32_t>(towlower_l(static_cast<wint_t>(point), locale));
}

/// The locale's key for `text`: C strings of such keys compare as the texts collate.
std::string collationKey(const std::string& text, locale_t locale) {
  // Locale data makes three or four weights of a letter; a second call is rarely needed.
  std::string key(text.size() * 6 + 16, '\0');
  const std::size_t size = strxfrm_l(key.data(), text.c_str(), key.size(), locale);
  if (size >= key.size()) {
    key.resize(size + 1);
    strxfrm_l(key.data(), text.c_str(), key.size(), locale);
  }
  key.resize(size);
  return key;
}

}  // namespace

HeadlessCollation::HeadlessCollation(const std::string& localeName) : locale_(localeName) {
  for (std::size_t i = 0; i < asciiLower_.size(); ++i) {
    const char32_t folded = lower(static_cast<char32_t>(i), locale_.get());
    asciiLower_[i] = folded < 0x80 ? static_cast<char>(folded) : '\0';
  }
}

std::string HeadlessCollation::folded(std::string_view validText) const {
  std::string text;
  text.reserve(validText.size());
  forEachCodePoint(validText, [&](char32_t point, std::string_view) {
    if (point < 0x80 && asciiLower_[point] != '\0') {
      text.push_back(asciiLower_[point]);
    } else {
      appendUtf8(text, lower(point, locale_.get()));
    }
  });
  return text;
}

// The folded name follows the locale's key, so that names which the locale data does not tell apart
// (it has no weights for some characters) still have one order. A name that is no text has its own
// bytes there: each bad byte collates as U+FFFD, and two such names still differ.
std::string HeadlessCollation::sortKey(std::string_view name) const {
  const bool isText = isValidUtf8(name);
  const std::string text = folded(isText ? name : withReplacementCharacters(name));
  std::string key = collationKey(text, locale_.get());
  key.push_back('\0');
  key.append(isText ? std::string_view(text) : name);
  return key;
}

}  // namespace lumisk
