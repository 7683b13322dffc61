#include "json_testing.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "core/json_format.h"
#include "core/json_formatter.h"
#include "core/output.h"

namespace lumisk::test {

namespace {

/// The text in memory of exactly its size, so that a sanitizer sees a read past its end.
class ExactCopy {
 public:
  explicit ExactCopy(std::string_view text) : bytes_(text.begin(), text.end()) {}
  std::string_view view() const { return {bytes_.data(), bytes_.size()}; }

 private:
  std::vector<char> bytes_;
};

template <typename Run>
std::optional<std::string> written(std::size_t sizeHint, Run run) {
  StringOutput out(sizeHint);
  if (!run(out)) return std::nullopt;
  return out.take();
}

}  // namespace

std::optional<std::string> formattedJson(std::string_view text) {
  const ExactCopy exact(text);
  const std::string_view alone = exact.view();
  const auto result =
      written(text.size(), [&](Output& out) { return appendFormattedJson(out, alone); });
  const auto portable = written(text.size(), [&](Output& out) {
    return json::appendFormatted<json::PortableBlock>(out, alone, alone.data() + alone.size());
  });
  EXPECT_EQ(result, portable) << "blocks disagree on: " << text.substr(0, 1000);
  for (const std::string_view behind :
       {"\"\"]}]}\\u0041", "   ,1]000000000000000000000000", "\n"}) {
    const std::string longer = std::string(text) + std::string(behind);
    const auto inside = written(text.size(), [&](Output& out) {
      return appendFormattedJson(out, std::string_view(longer).substr(0, text.size()), longer);
    });
    EXPECT_EQ(result, inside) << "text behind matters to: " << text.substr(0, 1000);
  }
  return result;
}

std::string unescapedHtml(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view rest = text.substr(at);
    EXPECT_TRUE(rest[0] != '<' && rest[0] != '>');
    if (rest.starts_with("&lt;")) {
      result += '<';
      at += 4;
    } else if (rest.starts_with("&gt;")) {
      result += '>';
      at += 4;
    } else if (rest.starts_with("&amp;")) {
      result += '&';
      at += 5;
    } else {
      EXPECT_NE(rest[0], '&');
      result += rest[0];
      ++at;
    }
  }
  return result;
}

// ---------------------------------------------------------------------------------------------
// Numbers

namespace {

double valueOf(const std::string& literal) { return std::strtod(literal.c_str(), nullptr); }

struct Digits {
  std::string digits;  // without leading zeros
  bool hasOnlyZeros = false;
};

Digits significantDigits(std::string_view literal) {
  Digits result;
  for (const char byte : literal.substr(0, literal.find_first_of("eE"))) {
    if (byte >= '0' && byte <= '9') result.digits += byte;
  }
  const std::size_t first = result.digits.find_first_not_of('0');
  result.hasOnlyZeros = first == std::string::npos;
  result.digits.erase(0, first);
  return result;
}

/// `digits`, which stand for d.ddd × 10^exponent, in the form that pages show.
std::string laidOut(std::string digits, int exponent) {
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  if (exponent < -4 || exponent > 15) {
    if (digits.size() > 1) digits.insert(1, ".");
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "e%c%02d", exponent < 0 ? '-' : '+',
                  std::abs(exponent));
    return digits + text.data();
  }
  if (exponent < 0)
    return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  const auto before = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() <= before) return digits + std::string(before - digits.size(), '0');
  return digits.insert(before, ".");
}

/// The decimals of `count` digits next to `value`, the closest first.
std::vector<std::pair<std::string, int>> decimalsNear(double value, int count) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*e", count - 1, value);
  std::string digits = text.data();
  const std::size_t mark = digits.find('e');
  const int exponent = std::atoi(digits.c_str() + mark + 1);
  digits.resize(mark);
  if (digits.size() > 1) digits.erase(1, 1);
  std::vector<std::pair<std::string, int>> result = {{digits, exponent}};
  const long long closest = std::atoll(digits.c_str());
  for (const long long other : {closest + 1, closest - 1}) {
    const std::string otherDigits = std::to_string(other);
    if (other > 0 && otherDigits.size() == digits.size()) result.push_back({otherDigits, exponent});
  }
  return result;
}

}  // namespace

std::string naiveShortestDecimal(std::string_view literal) {
  const bool isNegative = literal.starts_with('-');
  const std::string text(literal.substr(isNegative ? 1 : 0));
  const std::string sign = isNegative ? "-" : "";
  const auto [digits, hasOnlyZeros] = significantDigits(text);
  if (hasOnlyZeros) return sign + "0";
  if (digits.size() > 17) return std::string(literal);
  const double value = valueOf(text);
  if (value == 0 || std::isinf(value)) return std::string(literal);
  for (int count = 1; count <= 17; ++count) {
    for (const auto& [near, exponent] : decimalsNear(value, count)) {
      const int lastPlace = exponent - count + 1;
      if (valueOf(near + "e" + std::to_string(lastPlace)) == value) {
        return sign + laidOut(near, exponent);
      }
    }
  }
  ADD_FAILURE() << "17 digits always read back: " << literal;
  return {};
}

// ---------------------------------------------------------------------------------------------
// Documents

namespace {

/// Reads at `at_`, writes to `out_`; each function says whether it found what it is named after.
class NaiveFormatter {
 public:
  explicit NaiveFormatter(std::string_view text) : text_(text) {}

  std::optional<std::string> run() {
    if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
    blanks();
    if (peek() != '{' && peek() != '[') return std::nullopt;
    if (!value(0)) return std::nullopt;
    blanks();
    if (at_ != text_.size()) return std::nullopt;
    return out_;
  }

 private:
  int peek() const { return at_ < text_.size() ? static_cast<unsigned char>(text_[at_]) : -1; }
  bool take(char byte) {
    if (peek() != byte) return false;
    ++at_;
    return true;
  }
  void blanks() {
    while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r') ++at_;
  }
  void indent(int level) { out_ += "\n" + std::string(static_cast<std::size_t>(level) * 2, ' '); }

  bool value(int level) {
    if (peek() == '{' || peek() == '[') return level < 512 && container(level);
    if (peek() == '"') return string();
    for (const std::string_view word : {"true", "false", "null"}) {
      if (!text_.substr(at_).starts_with(word)) continue;
      out_ += word;
      at_ += word.size();
      return true;
    }
    return number();
  }

  bool container(int level) {
    const bool isObject = peek() == '{';
    const char closer = isObject ? '}' : ']';
    out_ += text_[at_++];
    blanks();
    if (peek() == closer) {
      out_ += "\n";
    } else {
      do {
        indent(level + 1);
        if (!(isObject ? member(level + 1) : item(level + 1))) return false;
      } while (comma());
    }
    if (!take(closer)) return false;
    indent(level);
    out_ += closer;
    return true;
  }

  bool member(int level) {
    blanks();
    return string() && colon() && item(level);
  }

  bool item(int level) {
    blanks();
    if (!value(level)) return false;
    blanks();
    return true;
  }

  bool comma() {
    if (!take(',')) return false;
    out_ += ",";
    return true;
  }

  bool colon() {
    blanks();
    if (!take(':')) return false;
    blanks();
    out_ += " : ";
    return true;
  }

  bool string() {
    if (!take('"')) return false;
    out_ += '"';
    while (peek() != '"') {
      if (peek() < 0x20) return false;  // the end of the text too
      if (!(peek() == '\\' ? escape() : plain())) return false;
    }
    ++at_;
    out_ += '"';
    return true;
  }

  bool plain() {
    character(static_cast<unsigned char>(text_[at_]), text_[at_]);
    ++at_;
    return true;
  }

  void character(char32_t point, char byte) {
    if (point == '&') {
      out_ += "&amp;";
    } else if (point == '<') {
      out_ += "&lt;";
    } else if (point == '>') {
      out_ += "&gt;";
    } else {
      out_ += byte;
    }
  }

  std::optional<char32_t> hex() {
    if (!take('\\') || !take('u')) return std::nullopt;
    char32_t unit = 0;
    for (int i = 0; i < 4; ++i, ++at_) {
      if (peek() < 0 || std::isxdigit(peek()) == 0) return std::nullopt;
      const std::string digit(1, static_cast<char>(peek()));
      unit = unit * 16 + static_cast<char32_t>(std::strtol(digit.c_str(), nullptr, 16));
    }
    return unit;
  }

  bool escape() {
    static constexpr std::string_view kSimple = "\"\\/bfnrt";
    const std::string_view pair = text_.substr(at_, 2);
    if (pair.size() < 2) return false;
    if (kSimple.find(pair[1]) != std::string_view::npos) {
      out_ += pair[1] == '/' ? "/" : pair;
      at_ += 2;
      return true;
    }
    std::optional<char32_t> point = hex();
    if (!point) return false;
    if (*point >= 0xDC00 && *point < 0xE000) return false;
    if (*point >= 0xD800 && *point < 0xDC00) {
      const std::optional<char32_t> low = hex();
      if (!low || *low < 0xDC00 || *low >= 0xE000) return false;
      point = 0x10000 + (*point - 0xD800) * 0x400 + (*low - 0xDC00);
    }
    escaped(*point);
    return true;
  }

  void escaped(char32_t point) {
    static constexpr std::string_view kControls = "\b\f\n\r\t\"\\";
    static constexpr std::string_view kLetters = "bfnrt\"\\";
    if (point < 0x80) {
      const auto byte = static_cast<char>(point);
      if (const std::size_t at = kControls.find(byte); at != std::string_view::npos) {
        out_ += '\\';
        out_ += kLetters[at];
      } else if (point < 0x20) {
        std::array<char, 8> text{};
        std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned>(point));
        out_ += text.data();
      } else {
        character(point, byte);
      }
    } else {
      utf8(point);
    }
  }

  void utf8(char32_t point) {
    const int tails = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    static constexpr std::array<char32_t, 4> kLeads = {0, 0xC0, 0xE0, 0xF0};
    out_ += static_cast<char>(kLeads[static_cast<std::size_t>(tails)] | (point >> (6 * tails)));
    for (int i = tails - 1; i >= 0; --i) {
      out_ += static_cast<char>(0x80 | ((point >> (6 * i)) & 0x3F));
    }
  }

  bool digits() {
    const std::size_t from = at_;
    while (peek() >= '0' && peek() <= '9') ++at_;
    return at_ > from;
  }

  bool number() {
    const std::size_t from = at_;
    bool isInteger = true;
    take('-');
    if (!take('0') && !digits()) return false;
    if (take('.')) {
      isInteger = false;
      if (!digits()) return false;
    }
    if (take('e') || take('E')) {
      isInteger = false;
      if (!take('-')) take('+');
      if (!digits()) return false;
    }
    const std::string_view literal = text_.substr(from, at_ - from);
    out_ += isInteger ? std::string(literal) : naiveShortestDecimal(literal);
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string out_;
};

}  // namespace

std::optional<std::string> naiveFormattedJson(std::string_view text) {
  return NaiveFormatter(text).run();
}

}  // namespace lumisk::test
