#pragma once

#include <fstream>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "support/files.h"

namespace lumisk::test {

/// How often `part` is in `text`.
inline std::size_t countOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

/// The languages of the program, from the list in the folder of the catalogues' sources.
inline std::vector<std::string> catalogueLanguages(const std::string& folder) {
  std::ifstream list(folder + "/LINGUAS");
  std::vector<std::string> names;
  for (std::string line; std::getline(list, line);) names.push_back(line);
  return names;
}

/// The source of one language's catalogue, as plain text: nothing in it is escaped but quotes, and
/// no text is broken into lines.
class Catalogue {
 public:
  Catalogue(const std::string& folder, const std::string& language)
      : source_(readAll(folder + "/" + language + ".po")) {}

  const std::string& source() const { return source_; }

  /// The texts for one key, a text a plural form; empty when it is not there.
  std::vector<std::string> textsOf(std::string_view key) const {
    const std::size_t begin = source_.find("msgid \"" + std::string(key) + "\"\n");
    if (begin == std::string::npos) return {};
    const std::string entry = source_.substr(begin, source_.find("\n\n", begin) - begin);
    const std::regex line("\nmsgstr(\\[\\d\\])? \"([^\n]*)\"");
    std::vector<std::string> texts;
    for (std::sregex_iterator at(entry.begin(), entry.end(), line), end; at != end; ++at)
      texts.push_back((*at)[2]);
    return texts;
  }

  std::vector<std::string> keys() const {
    const std::regex line("\nmsgid \"([^\"\n]+)\"");
    std::vector<std::string> found;
    for (std::sregex_iterator at(source_.begin(), source_.end(), line), end; at != end; ++at)
      found.push_back((*at)[1]);
    return found;
  }

  /// How many forms a counted text has in the language.
  std::size_t pluralForms() const {
    std::smatch found;
    if (!std::regex_search(source_, found, std::regex("nplurals=(\\d+)"))) return 0;
    return std::stoul(found[1]);
  }

 private:
  std::string source_;
};

}  // namespace lumisk::test
