#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace lumisk {

/// `size` characters drawn from `alphabet`; write a character several times to make it frequent.
inline std::string randomText(std::mt19937& random, std::string_view alphabet, std::size_t size) {
  std::string text(size, '\0');
  for (char& character : text) character = alphabet[random() % alphabet.size()];
  return text;
}

/// Every text over `alphabet` of up to `longest` characters, shortest first.
inline std::vector<std::string> allTexts(std::string_view alphabet, std::size_t longest) {
  std::vector<std::string> texts = {""};
  std::size_t previousBegin = 0;
  for (std::size_t length = 1; length <= longest; ++length) {
    const std::size_t previousEnd = texts.size();
    for (std::size_t i = previousBegin; i < previousEnd; ++i) {
      for (const char character : alphabet) texts.push_back(texts[i] + character);
    }
    previousBegin = previousEnd;
  }
  return texts;
}

/// `text` again and again, at least `size` bytes.
inline std::string repeated(std::string_view text, std::size_t size) {
  std::string result;
  while (result.size() < size && !text.empty()) result += text;
  return result;
}

}  // namespace lumisk
