#include "support/catalogue.h"

#include <fstream>
#include <regex>

#include "support/files.h"

namespace lumisk::test {

std::size_t countOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

std::vector<std::string> catalogueLanguages(const std::string& folder) {
  std::ifstream list(folder + "/LINGUAS");
  std::vector<std::string> names;
  for (std::string line; std::getline(list, line);) names.push_back(line);
  return names;
}

Catalogue::Catalogue(const std::string& folder, const std::string& language)
    : source_(readAll(folder + "/" + language + ".po")) {}

std::vector<std::string> Catalogue::textsOf(std::string_view key) const {
  const std::size_t begin = source_.find("msgid \"" + std::string(key) + "\"\n");
  if (begin == std::string::npos) return {};
  const std::string entry = source_.substr(begin, source_.find("\n\n", begin) - begin);
  const std::regex line("\nmsgstr(\\[\\d\\])? \"([^\n]*)\"");
  std::vector<std::string> texts;
  for (std::sregex_iterator at(entry.begin(), entry.end(), line), end; at != end; ++at)
    texts.push_back((*at)[2]);
  return texts;
}

std::vector<std::string> Catalogue::keys() const {
  const std::regex line("\nmsgid \"([^\"\n]+)\"");
  std::vector<std::string> found;
  for (std::sregex_iterator at(source_.begin(), source_.end(), line), end; at != end; ++at)
    found.push_back((*at)[1]);
  return found;
}

std::size_t Catalogue::pluralForms() const {
  std::smatch found;
  if (!std::regex_search(source_, found, std::regex("nplurals=(\\d+)"))) return 0;
  return std::stoul(found[1]);
}

}  // namespace lumisk::test
