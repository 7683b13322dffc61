#include "bench/json_corpora.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <random>
#include <string_view>

namespace lumisk::bench {

namespace {

using Random = std::mt19937_64;

/// Reserved beyond the size asked for, so that a large corpus is never held twice.
constexpr std::size_t kLongestItem = 1 << 16;

std::size_t below(Random& random, std::size_t bound) { return random() % bound; }

constexpr std::array<std::string_view, 24> kWords = {
    "the",   "of",      "preview", "document", "a",     "window", "shows",     "file",
    "and",   "quickly", "in",      "colour",   "when",  "person", "selecting", "it",
    "large", "Grüße",   "élan",    "to",       "every", "format", "unchanged", "is"};

std::string words(Random& random, std::size_t size) {
  std::string text;
  while (text.size() < size) {
    text += kWords[below(random, kWords.size())];
    const std::size_t mark = below(random, 120);
    text += mark == 0   ? ".\\n"
            : mark == 1 ? " \\\"so\\\" "
            : mark == 2 ? " & "
            : mark == 3 ? " <b> "
            : mark == 4 ? " \\u2014 "
            : mark < 10 ? ", "
                        : " ";
  }
  return text;
}

std::string decimal(double value, int precision) {
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::fixed, precision)
                       .ptr;
  return {text.data(), end};
}

std::string shortest(double value) {
  std::array<char, 64> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

double unit(Random& random) { return static_cast<double>(random() >> 11) * 0x1p-53; }

/// `item()` again and again, as the items of one array.
template <typename Item>
std::string arrayOf(std::size_t size, Item item) {
  std::string text = "[";
  text.reserve(size + kLongestItem);
  while (text.size() < size) {
    if (text.size() > 1) text += ',';
    text += item();
  }
  text += ']';
  return text;
}

std::string record(Random& random) {
  return "{\"time\":\"2024-05-" + std::to_string(10 + below(random, 20)) +
         "T12:" + std::to_string(10 + below(random, 50)) +
         ":07.123Z\",\"level\":\"info\",\"id\":" + std::to_string(random() % 1000000000) +
         ",\"took\":" + decimal(unit(random) * 1000, 3) +
         "1,\"request\":{\"path\":\"\\/api\\/items\\/" + std::to_string(below(random, 10000)) +
         "\",\"ok\":true,\"user\":null},\"tags\":[\"web\",\"" +
         std::string(kWords[below(random, kWords.size())]) + "\"],\"message\":\"" +
         words(random, 20 + below(random, 60)) + "\"}";
}

std::string name(Random& random) {
  return "\"" + std::string(kWords[below(random, kWords.size())]) + "\"";
}

/// Appends a tree; `indent` blanks a level, or all on one line.
void appendTree(std::string& text, Random& random, std::size_t level, std::size_t depth,
                std::size_t indent) {
  const auto newLine = [&](std::size_t at) {
    if (indent != 0) text += "\n" + std::string(at * indent, ' ');
  };
  const bool isObject = below(random, 2) == 0;
  text += isObject ? '{' : '[';
  const std::size_t count = 1 + below(random, 3);
  const std::size_t deepItem = below(random, count);
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += ',';
    newLine(level + 1);
    if (isObject) text += name(random) + (indent == 0 ? ":" : ": ");
    if (i == deepItem && level < depth) {
      appendTree(text, random, level + 1, depth, indent);
    } else {
      text += below(random, 2) == 0 ? name(random) : std::to_string(below(random, 100000));
    }
  }
  newLine(level);
  text += isObject ? '}' : ']';
}

std::string trees(std::size_t size, std::size_t indent) {
  Random random(4);
  return arrayOf(size, [&] {
    std::string text = indent == 0 ? "" : "\n" + std::string(indent, ' ');
    appendTree(text, random, 1, 10 + below(random, 40), indent);
    return text;
  });
}

}  // namespace

std::string textJson(std::size_t size) {
  Random random(1);
  return arrayOf(size, [&] {
    return "{\"title\":\"" + words(random, 40) + "\",\"author\":" + name(random) + ",\"body\":\"" +
           words(random, 200 + below(random, 1200)) + "\"}";
  });
}

std::string numberJson(std::size_t size) {
  Random random(2);
  return arrayOf(size, [&] {
    return "[" + std::to_string(below(random, 100000)) + "," +
           decimal(unit(random) * 360 - 180, 6) + "," + decimal(unit(random) * 90, 2) + "," +
           std::to_string(random() % 10000000000) + "," + decimal(unit(random), 12) + ",0," +
           decimal(unit(random) * 5, 1) + "]";
  });
}

std::string preciseNumberJson(std::size_t size) {
  Random random(3);
  return arrayOf(size, [&] {
    return "[" + shortest(unit(random) * 360 - 180) + "," + shortest(unit(random) * 90) + "," +
           shortest(unit(random)) + "]";
  });
}

std::string deepJson(std::size_t size) { return trees(size, 0); }
std::string indentedJson(std::size_t size) { return trees(size, 4); }

std::string recordJson(std::size_t size) {
  Random random(5);
  return arrayOf(size, [&] { return record(random); });
}

std::string recordLines(std::size_t size) {
  Random random(5);
  std::string text;
  text.reserve(size + kLongestItem);
  while (text.size() < size) text += record(random) + "\n";
  return text;
}

}  // namespace lumisk::bench
