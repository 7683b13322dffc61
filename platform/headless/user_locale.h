#pragma once

#include <clocale>
#include <string>

namespace lumisk {

/// The person's locale as a value. It is kept apart from `setlocale`, whose one setting belongs to
/// the whole process and may not be changed while other threads run.
///
/// All text here is UTF-8. A locale that is not installed, or whose texts are in another encoding,
/// is replaced by the C.UTF-8 locale; its language of messages is kept, because the message
/// catalogues are converted to any encoding.
class UserLocale {
 public:
  /// The locale with this name ("de_DE.UTF-8"); empty for the one that LC_ALL, LC_… and LANG name.
  explicit UserLocale(const std::string& name = "");
  ~UserLocale();
  UserLocale(const UserLocale&) = delete;
  UserLocale& operator=(const UserLocale&) = delete;

  locale_t get() const { return locale_; }

 private:
  locale_t locale_;
};

}  // namespace lumisk
