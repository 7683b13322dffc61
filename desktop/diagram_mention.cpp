#include "desktop/diagram_mention.h"

#include <array>
#include <cstring>
#include <string>

#include "core/markdown_page.h"

namespace lumisk::desktop {
namespace {

/// In a page's text only where the page loads the library, or, elsewhere, speaks of it.
constexpr std::string_view kLibrary = "/mermaid.min.js\"></script>";

/// What a document needs one of to come to a diagram, in lower case.
constexpr std::array<std::string_view, 6> kMentions = {"mermaid", "&#",      "</script",
                                                       "<iframe", "<object", "<embed"};

/// Beyond it the search would cost more than the library that it may spare.
constexpr std::size_t kLongestSearch = std::size_t{8} * 1024 * 1024;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool isAt(const char* place, std::string_view word) {
  for (std::size_t i = 0; i < word.size(); ++i)
    if (lower(place[i]) != word[i]) return false;
  return true;
}

/// How often `word` stands in `text` with `first` as its first letter, counted up to one more than
/// `limit`. The C library's search for one character looks at many at once.
std::size_t countFrom(std::string_view text, char first, std::string_view word, std::size_t limit) {
  if (text.size() < word.size()) return 0;
  std::size_t count = 0;
  const char* at = text.data();
  const char* const end = text.data() + text.size() - word.size() + 1;
  for (; at < end && count <= limit; ++at) {
    at = static_cast<const char*>(std::memchr(at, first, static_cast<std::size_t>(end - at)));
    if (at == nullptr) break;
    if (isAt(at, word)) ++count;
  }
  return count;
}

/// In upper or lower case.
std::size_t countUpTo(std::string_view text, std::string_view word, std::size_t limit) {
  const char first = word.front();
  const std::size_t count = countFrom(text, first, word, limit);
  return upper(first) == first ? count : count + countFrom(text, upper(first), word, limit);
}

using Counts = std::array<std::size_t, kMentions.size()>;

Counts countsInFixedText() {
  const std::string fixedText = buildMarkdownPage("", "", false);
  Counts counts{};
  for (std::size_t i = 0; i < counts.size(); ++i)
    counts.at(i) = countUpTo(fixedText, kMentions.at(i), fixedText.size());
  return counts;
}

}  // namespace

std::optional<Diagrams> diagramsIn(std::string_view page) {
  if (page.find(kLibrary) == std::string_view::npos) return std::nullopt;
  if (page.size() > kLongestSearch) return Diagrams::Possible;
  static const Counts fixed = countsInFixedText();
  for (std::size_t i = 0; i < fixed.size(); ++i)
    if (countUpTo(page, kMentions.at(i), fixed.at(i)) > fixed.at(i)) return Diagrams::Possible;
  return Diagrams::None;
}

}  // namespace lumisk::desktop
