#include "desktop/diagram_mention.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <string>

#include "core/markdown_page.h"

namespace lumisk::desktop {
namespace {

/// What a document needs one of to come to a diagram, in lower case.
constexpr std::array<std::string_view, 3> kMentions = {"mermaid", "&#", "</script"};

/// Beyond it the search would cost more than the library that it may spare.
constexpr std::size_t kLongestSearch = std::size_t{8} * 1024 * 1024;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// How often `word` stands in `text`, counted up to one more than `limit`.
std::size_t countUpTo(std::string_view text, std::string_view word, std::size_t limit) {
  const std::boyer_moore_horspool_searcher searcher(
      word.begin(), word.end(), [](char c) { return std::hash<char>()(lower(c)); },
      [](char a, char b) { return lower(a) == lower(b); });
  std::size_t count = 0;
  const auto* from = text.begin();
  while (count <= limit) {
    from = std::search(from, text.end(), searcher);
    if (from == text.end()) break;
    ++count;
    ++from;
  }
  return count;
}

}  // namespace

Diagrams diagramsIn(std::string_view page) {
  if (page.size() > kLongestSearch) return Diagrams::Possible;
  static const std::string fixedText = buildMarkdownPage("", "", false);
  constexpr std::size_t kNoLimit = std::string::npos - 1;
  const bool mentions = std::any_of(kMentions.begin(), kMentions.end(), [&](std::string_view word) {
    const std::size_t fixed = countUpTo(fixedText, word, kNoLimit);
    return countUpTo(page, word, fixed) > fixed;
  });
  return mentions ? Diagrams::Possible : Diagrams::None;
}

}  // namespace lumisk::desktop
