#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lumisk::test {

/// How often `part` is in `text`.
std::size_t countOf(std::string_view text, std::string_view part);

/// The languages of the program, from the list in the folder of the catalogues' sources.
std::vector<std::string> catalogueLanguages(const std::string& folder);

/// The source of one language's catalogue, as plain text: nothing in it is escaped but quotes, and
/// no text is broken into lines.
class Catalogue {
 public:
  Catalogue(const std::string& folder, const std::string& language);

  const std::string& source() const { return source_; }

  /// The texts for one key, a text a plural form; empty when it is not there.
  std::vector<std::string> textsOf(std::string_view key) const;

  std::vector<std::string> keys() const;

  /// How many forms a counted text has in the language.
  std::size_t pluralForms() const;

 private:
  std::string source_;
};

}  // namespace lumisk::test
