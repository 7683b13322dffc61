#include <unicode/coll.h>
#include <unicode/datefmt.h>
#include <unicode/unistr.h>

#include <array>
#include <string>
#include <vector>

#include "desktop/gtk_platform.h"

namespace lumisk::desktop {
namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr long kNanosecondsPerMillisecond = 1'000'000;

class IcuDateFormatter final : public DateFormatter {
 public:
  IcuDateFormatter()
      : format_(icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium,
                                                        icu::DateFormat::kShort)) {}

  std::string stringFromDate(FileTime date) const override {
    std::string text;
    if (!format_) return text;
    icu::UnicodeString formatted;
    const auto milliseconds = date.tv_nsec / kNanosecondsPerMillisecond;
    format_->format(static_cast<double>(date.tv_sec) * kMillisecondsPerSecond +
                        static_cast<double>(milliseconds),
                    formatted);
    return formatted.toUTF8String(text);
  }

 private:
  std::unique_ptr<icu::DateFormat> format_;
};

/// The locale's order, upper and lower case alike; digits are characters, not numbers.
class IcuCollation final : public Collation {
 public:
  IcuCollation() {
    UErrorCode status = U_ZERO_ERROR;
    collator_.reset(icu::Collator::createInstance(status));
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
