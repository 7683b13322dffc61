#include "desktop/broken_lines.h"

#include <algorithm>

namespace lumisk::desktop {
namespace {

constexpr const char* kTagName = "line-break";

/// A long paragraph of words stays as it is; this takes some ten milliseconds to be laid out.
constexpr std::size_t kLongestLine = std::size_t{4} * 1024;  // bytes
/// What cannot be broken at a blank takes time that grows with the square of its length.
constexpr std::size_t kLongestWord = 1024;  // bytes
/// How many accents and joiners may belong to one character.
constexpr int kMostMarks = 32;

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

/// Whether the character at `at` belongs to the one before it.
bool isMark(std::string_view text, std::size_t at) {
  const gunichar character = g_utf8_get_char(text.data() + at);
  return g_unichar_ismark(character) || g_unichar_iszerowidth(character);
}

/// Where to break a word between `first` and `last`, at the last if a character begins there.
std::size_t breakPosition(std::string_view text, std::size_t first, std::size_t last) {
  std::size_t at = last;
  for (int i = 0; i < kMostMarks; ++i) {
    while (at > first && !startsCharacter(text[at])) --at;
    if (at == first || !isMark(text, at)) break;
    --at;
  }
  while (at > first && !startsCharacter(text[at])) --at;
  return at;
}

}  // namespace

BrokenLines::BrokenLines(GtkTextBuffer* buffer) : buffer_(buffer) {
  gtk_text_buffer_create_tag(buffer, kTagName, "invisible", TRUE, nullptr);
}

void BrokenLines::clear() {
  gtk_text_buffer_set_text(buffer_, "", 0);
  lineLength_ = wordLength_ = 0;
}

void BrokenLines::append(std::string_view text) {
  std::size_t inserted = 0;
  std::size_t at = 0;
  const auto breakAt = [&](std::size_t position) {
    insert(text.substr(inserted, position - inserted));
    insertBreak();
    inserted = at = position;
  };
  while (at < text.size()) {
    const std::size_t wordEnd = std::min(text.find_first_of(" \t\r\n", at), text.size());
    const std::size_t length = wordEnd - at;
    if (wordLength_ + length > kLongestWord)
      breakAt(breakPosition(text, at, at + (kLongestWord - wordLength_)));
    else if (lineLength_ + length > kLongestLine && wordLength_ == 0)
      breakAt(at);
    else
      at = pass(text, at, wordEnd);
  }
  insert(text.substr(inserted));
}

/// Counts the word from `start` to `end` and what comes behind it, which may be none of this text.
/// Returns where that ends.
std::size_t BrokenLines::pass(std::string_view text, std::size_t start, std::size_t end) {
  const bool isEnded = end < text.size();
  const bool isLineEnded = isEnded && (text[end] == '\r' || text[end] == '\n');
  wordLength_ = isEnded ? 0 : wordLength_ + (end - start);
  lineLength_ = isLineEnded ? 0 : lineLength_ + (end - start) + 1;
  return isEnded ? end + 1 : end;
}

void BrokenLines::insert(std::string_view text) {
  GtkTextIter end;
  gtk_text_buffer_get_end_iter(buffer_, &end);
  gtk_text_buffer_insert(buffer_, &end, text.data(), static_cast<int>(text.size()));
}

void BrokenLines::insertBreak() {
  GtkTextIter end;
  gtk_text_buffer_get_end_iter(buffer_, &end);
  gtk_text_buffer_insert_with_tags(buffer_, &end, "\n", 1, lineBreakTag(buffer_), nullptr);
  lineLength_ = wordLength_ = 0;
}

GtkTextTag* lineBreakTag(GtkTextBuffer* buffer) {
  return gtk_text_tag_table_lookup(gtk_text_buffer_get_tag_table(buffer), kTagName);
}

}  // namespace lumisk::desktop
