#pragma once

#include <array>
#include <string>

#include "platform/headless/user_locale.h"
#include "platform/platform.h"

namespace lumisk {

/// The order of the C library's locale data, of names in lower case. In the C locale that is the
/// order of code points.
class HeadlessCollation final : public Collation {
 public:
  /// See `UserLocale` for the name.
  explicit HeadlessCollation(const std::string& localeName = "");

  std::string sortKey(std::string_view name) const override;

 private:
  std::string folded(std::string_view validText) const;

  UserLocale locale_;
  /// The lower case of each ASCII character, or NUL where it is none of these: in Turkish the lower
  /// case of I is ı.
  std::array<char, 128> asciiLower_{};
};

}  // namespace lumisk
