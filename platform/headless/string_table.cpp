#include "platform/headless/string_table.h"

#include <libintl.h>

#include <algorithm>
#include <array>

namespace lumisk {
namespace {

constexpr const char* kDomain = "lumisk";

constexpr std::array kEnglishTexts = {
    EnglishText{"folder.items", "%lld item", "%lld items"},
    EnglishText{"folder.items.hidden", "%lld hidden", "%lld hidden"},
    EnglishText{"folder.modified", "Modified: %s", ""},
    EnglishText{"folder.empty", "This folder is empty", ""},
    EnglishText{"preview.mode.rendered", "Preview", ""},
    EnglishText{"preview.mode.source", "Raw Text", ""},
    EnglishText{"preview.mode.formatted", "Formatted", ""},
};

const EnglishText* findEnglish(std::string_view key) {
  const auto* found = std::ranges::find(kEnglishTexts, key, &EnglishText::key);
  return found == kEnglishTexts.end() ? nullptr : &*found;
}

/// Lends the thread a locale for a while.
class ThreadLocale {
 public:
  explicit ThreadLocale(locale_t locale) : former_(uselocale(locale)) {}
  ~ThreadLocale() { uselocale(former_); }
  ThreadLocale(const ThreadLocale&) = delete;
  ThreadLocale& operator=(const ThreadLocale&) = delete;

 private:
  locale_t former_;
};

}  // namespace

GettextStringTable::GettextStringTable(const std::string& localeName, const std::string& folder)
    : locale_(localeName) {
  bindtextdomain(kDomain, folder.empty() ? LUMISK_LOCALE_FOLDER : folder.c_str());
  bind_textdomain_codeset(kDomain, "UTF-8");
}

// A look-up that finds nothing returns the very string it was asked for; and the empty key is the
// catalogue's header, which is no text.
std::optional<std::string> GettextStringTable::text(std::string_view key) const {
  if (key.empty()) return std::nullopt;
  const ThreadLocale scope(locale_.get());
  const std::string wanted(key);
  const char* found = dgettext(kDomain, wanted.c_str());
  if (found != wanted.c_str()) return found;
  const EnglishText* english = findEnglish(key);
  return english ? std::optional<std::string>(english->singular) : std::nullopt;
}

std::optional<std::string> GettextStringTable::pluralText(std::string_view key,
                                                          std::int64_t count) const {
  if (key.empty()) return std::nullopt;
  const ThreadLocale scope(locale_.get());
  const std::string wanted(key);
  const auto bits = static_cast<unsigned long>(count);
  const unsigned long number = count < 0 ? 0UL - bits : bits;
  const char* found = dngettext(kDomain, wanted.c_str(), wanted.c_str(), number);
  if (found != wanted.c_str()) return found;
  const EnglishText* english = findEnglish(key);
  if (english == nullptr) return std::nullopt;
  const bool isPlural = number != 1 && !english->plural.empty();
  return std::string(isPlural ? english->plural : english->singular);
}

std::span<const EnglishText> englishTexts() { return kEnglishTexts; }

}  // namespace lumisk
