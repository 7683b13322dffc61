#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace lumisk::bench {

// Generated texts, the same in every run on every machine. Each has at least `size` bytes and ends
// with a whole line.

/// Source code: about one character in seventy is an ampersand or angle bracket, as in the headers
/// of a C++ library.
std::string sourceText(std::size_t size);

/// Markup: about one character in nine.
std::string markupText(std::size_t size);

/// Prose in Latin, Greek, Cyrillic, Arabic, Devanagari, Chinese and Japanese, with emoji.
std::string mixedScripts(std::size_t size);

/// Prose in ASCII.
std::string asciiText(std::size_t size);

enum class CellQuotes { None, Some, All };

/// Ten columns of numbers, names, dates and words; with `Some`, two columns of ten are quoted.
std::string csvText(std::size_t size, CellQuotes quotes);

/// Picks words and numbers; the same sequence everywhere (the library's distributions differ).
class Picker {
 public:
  explicit Picker(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t limit) { return random_() % limit; }
  template <typename Container>
  auto& from(Container& choices) {
    return choices[below(std::size(choices))];
  }

 private:
  std::mt19937 random_;
};

}  // namespace lumisk::bench
