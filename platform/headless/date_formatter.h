#pragma once

#include <string>

#include "platform/headless/user_locale.h"
#include "platform/platform.h"

namespace lumisk {

/// Dates in the words of the C library's locale data.
///
/// That data knows a date in digits and no medium one. Where the digits are ambiguous abroad, the
/// month is therefore named, in the locale's own order; where they are not, they are the medium
/// form. The time has hours and minutes, in twelve hours where the locale counts so.
///
///     C       21 Nov 2026, 14:05          de_DE   21.11.2026, 14:05
///     en_US   Nov 21, 2026, 2:05 PM       ja_JP   2026年11月21日 14:05
///     fr_FR   21 nov. 2026, 14:05         sv_SE   2026-11-21 14:05
///
/// A moment whose year the C library cannot count is shown as seconds since 1970, as `ls` does.
class HeadlessDateFormatter final : public DateFormatter {
 public:
  /// Takes the time zone of the moment (TZ) and this locale; see `UserLocale`.
  explicit HeadlessDateFormatter(const std::string& localeName = "");

  std::string stringFromDate(FileTime date) const override;

 private:
  UserLocale locale_;
  std::string format_;
};

/// The `strftime` form of a medium date with a short time, from a locale's own forms of a date in
/// digits, a time, and a time in twelve hours (LC_TIME's d_fmt, t_fmt and t_fmt_ampm).
std::string mediumDateFormat(std::string_view dateFormat, std::string_view timeFormat,
                             std::string_view twelveHourFormat);

}  // namespace lumisk
