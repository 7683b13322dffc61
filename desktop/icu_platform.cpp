#include <unicode/coll.h>
#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <array>
#include <clocale>
#include <cmath>
#include <string>
#include <unordered_map>
#include <vector>

#include "desktop/gtk_platform.h"

namespace lumisk::desktop {
namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr long kNanosecondsPerMillisecond = 1'000'000;

constexpr double kMillisecondsPerMinute = 60 * kMillisecondsPerSecond;
/// Texts of dates that are kept: a folder has many entries of the same minutes.
constexpr std::size_t kMostTexts = 4096;

bool isNoLocale(const std::string& name) {
  return name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.");
}

/// The locale that the person has chosen for `category`. ICU's own default is the one for messages,
/// whatever is set for dates or for the order of names. As ICU does, a locale that the C library
/// does not have is taken from the environment, and no locale means American English.
icu::Locale localeFor(int category, const char* variable) {
  const char* known = std::setlocale(category, nullptr);
  std::string name = known == nullptr ? "" : known;
  const bool isSet = !name.empty() && name != "C" && name != "POSIX";
  for (const char* source : {"LC_ALL", variable, "LANG"}) {
    const char* value = isSet ? nullptr : g_getenv(source);
    if (value == nullptr || *value == '\0') continue;
    name = value;
    break;
  }
  return isNoLocale(name) ? icu::Locale("en", "US", "POSIX")
                          : icu::Locale::createCanonical(name.c_str());
}

/// Whether a pattern of ICU's has seconds or a part of them.
bool hasSeconds(const icu::DateFormat& format) {
  const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(&format);
  if (simple == nullptr) return true;
  icu::UnicodeString pattern;
  simple->toPattern(pattern);
  bool isQuoted = false;
  for (std::int32_t i = 0; i < pattern.length(); ++i) {
    const char16_t character = pattern[i];
    if (character == u'\'') isQuoted = !isQuoted;
    if (!isQuoted && (character == u's' || character == u'S' || character == u'A')) return true;
  }
  return false;
}

/// Making the text of a date takes longer than all else that a row of a folder needs, so the texts
/// of the latest minutes are kept. Main thread only.
class IcuDateFormatter final : public DateFormatter {
 public:
  IcuDateFormatter()
      : format_(icu::DateFormat::createDateTimeInstance(
            icu::DateFormat::kMedium, icu::DateFormat::kShort, localeFor(LC_TIME, "LC_TIME"))),
        isByTheMinute_(format_ && !hasSeconds(*format_)) {}

  std::string stringFromDate(FileTime date) const override {
    if (!format_) return {};
    const auto milliseconds = date.tv_nsec / kNanosecondsPerMillisecond;
    const double moment = static_cast<double>(date.tv_sec) * kMillisecondsPerSecond +
                          static_cast<double>(milliseconds);
    return isByTheMinute_ ? textOfMinute(moment) : textOf(moment);
  }

 private:
  std::string textOf(double moment) const {
    std::string text;
    icu::UnicodeString formatted;
    format_->format(moment, formatted);
    return formatted.toUTF8String(text);
  }

  /// By the minute on the person's clock: zones of old were seconds apart.
  std::string textOfMinute(double moment) const {
    std::int32_t zone = 0;
    std::int32_t summer = 0;
    UErrorCode status = U_ZERO_ERROR;
    format_->getTimeZone().getOffset(moment, static_cast<UBool>(false), zone, summer, status);
    const double minute = std::floor((moment + zone + summer) / kMillisecondsPerMinute);
    if (U_FAILURE(status) || !(std::abs(minute) < kMostMinutes)) return textOf(moment);
    if (texts_.size() >= kMostTexts) texts_.clear();
    std::string& text = texts_[static_cast<std::int64_t>(minute)];
    if (text.empty()) text = textOf(moment);
    return text;
  }

  static constexpr double kMostMinutes = 1e15;  // of which a double knows each

  std::unique_ptr<icu::DateFormat> format_;
  bool isByTheMinute_;
  mutable std::unordered_map<std::int64_t, std::string> texts_;
};

/// The locale's order, upper and lower case alike; digits are characters, not numbers.
class IcuCollation final : public Collation {
 public:
  IcuCollation() {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale = localeFor(LC_COLLATE, "LC_COLLATE");
    collator_.reset(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status)) collator_.reset();
    if (collator_) collator_->setStrength(icu::Collator::SECONDARY);
  }

  std::string sortKey(std::string_view name) const override {
    if (!collator_) return std::string(name);
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(
        icu::StringPiece(name.data(), static_cast<std::int32_t>(name.size())));
    std::array<std::uint8_t, 256> small{};
    const auto room = static_cast<std::int32_t>(small.size());
    const std::int32_t needed = collator_->getSortKey(text, small.data(), room);
    if (needed <= room) return toText(small.data(), needed);
    std::vector<std::uint8_t> large(static_cast<std::size_t>(needed));
    return toText(large.data(), collator_->getSortKey(text, large.data(), needed));
  }

 private:
  /// Without the zero byte that ends every key.
  static std::string toText(const std::uint8_t* key, std::int32_t size) {
    return {reinterpret_cast<const char*>(key), static_cast<std::size_t>(size > 0 ? size - 1 : 0)};
  }

  std::unique_ptr<icu::Collator> collator_;
};

}  // namespace

std::shared_ptr<const DateFormatter> makeIcuDateFormatter() {
  return std::make_shared<const IcuDateFormatter>();
}

std::unique_ptr<Collation> makeIcuCollation() { return std::make_unique<IcuCollation>(); }

}  // namespace lumisk::desktop
