#pragma once

#include <span>
#include <string>

#include "platform/headless/user_locale.h"
#include "platform/platform.h"

namespace lumisk {

/// The texts of the gettext catalogues, and those of the development language where they have none.
///
/// The C library's own look-up is used rather than a reader of ours: LANGUAGE lists, "de" standing
/// in for "de_AT", plural rules and encodings then follow the same rules as in every other program
/// of the desktop. It takes its language from the thread's locale, which is set for the length of a
/// look-up, so `setlocale` is never called.
class GettextStringTable final : public StringTable {
 public:
  /// Catalogues are `folder`/<language>/LC_MESSAGES/lumisk.mo; without `folder` those of the
  /// installed program. The folder is the process's one for this program: the last object wins.
  explicit GettextStringTable(const std::string& localeName = "", const std::string& folder = "");

  std::optional<std::string> text(std::string_view key) const override;
  std::optional<std::string> pluralText(std::string_view key, std::int64_t count) const override;

 private:
  UserLocale locale_;
};

/// A text of the development language, which needs no catalogue. The plural is empty when the text
/// has no plural forms.
struct EnglishText {
  std::string_view key;
  std::string_view singular;
  std::string_view plural;
};

/// All of them, for the test that holds the catalogues against them.
std::span<const EnglishText> englishTexts();

}  // namespace lumisk
