#include "platform/headless/date_formatter.h"

#include <langinfo.h>

#include <array>
#include <ctime>

namespace lumisk {
namespace {

/// What the POSIX locale says; its two-digit year with the month first is nobody's habit.
constexpr std::string_view kPosixDateFormat = "%m/%d/%y";
constexpr std::string_view kPlainDate = "%-d %b %Y";
constexpr std::size_t kMaxDateSize = 256;

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

/// The first conversion's letter, past flags and modifiers: 'd' of "%-d/%-m/%y".
char firstConversion(std::string_view format) {
  const std::size_t percent = format.find('%');
  if (percent == std::string_view::npos) return '\0';
  const std::size_t letter = format.find_first_not_of("-_0^#EO", percent + 1);
  return letter == std::string_view::npos ? '\0' : format[letter];
}

/// With "%y" as "%Y": the medium form has the whole year.
std::string withWholeYear(std::string_view format) {
  std::string whole(format);
  for (std::size_t at = whole.find("%y"); at != std::string::npos; at = whole.find("%y", at)) {
    whole[at + 1] = 'Y';
  }
  return whole;
}

std::string datePart(std::string_view format) {
  if (format.empty() || format == kPosixDateFormat) return std::string(kPlainDate);
  const bool hasOtherDigitsOrEra = contains(format, "%O") || contains(format, "%E");
  const bool isAmbiguous = contains(format, "/") || contains(format, "-%");
  if (hasOtherDigitsOrEra || !isAmbiguous) return withWholeYear(format);
  switch (firstConversion(format)) {
    case 'd':
    case 'e':
      return std::string(kPlainDate);
    case 'm':
      return "%b %-d, %Y";
    default:
      return withWholeYear(format);
  }
}

std::string timePart(std::string_view format, std::string_view twelveHourFormat) {
  const bool hasTwelveHours = contains(format, "%r") || contains(format, "%I") ||
                              contains(format, "%l") || contains(format, "%p");
  if (!hasTwelveHours || twelveHourFormat.empty()) return "%H:%M";
  return twelveHourFormat.starts_with("%p") ? "%p %-I:%M" : "%-I:%M %p";
}

}  // namespace

std::string mediumDateFormat(std::string_view dateFormat, std::string_view timeFormat,
                             std::string_view twelveHourFormat) {
  const std::string date = datePart(dateFormat);
  const char first = firstConversion(date);
  const bool isYearFirst = first == 'Y' || first == 'y' || first == 'C';
  return date + (isYearFirst ? " " : ", ") + timePart(timeFormat, twelveHourFormat);
}

HeadlessDateFormatter::HeadlessDateFormatter(const std::string& localeName)
    : locale_(localeName),
      format_(mediumDateFormat(nl_langinfo_l(D_FMT, locale_.get()),
                               nl_langinfo_l(T_FMT, locale_.get()),
                               nl_langinfo_l(T_FMT_AMPM, locale_.get()))) {
  tzset();
}

std::string HeadlessDateFormatter::stringFromDate(FileTime date) const {
  std::tm parts{};
  if (localtime_r(&date.tv_sec, &parts) == nullptr) return std::to_string(date.tv_sec);
  std::array<char, kMaxDateSize> text{};
  return {text.data(),
          strftime_l(text.data(), text.size(), format_.c_str(), &parts, locale_.get())};
}

}  // namespace lumisk
