#pragma once

#include <array>
#include <bit>
#include <cstring>
#include <string_view>

#include "core/json_block.h"
#include "core/json_format.h"
#include "core/json_number.h"
#include "core/json_plain_number.h"
#include "core/json_stream.h"
#include "core/json_string.h"

namespace lumisk::json {

/// One pass over one document; see `appendFormattedJson`.
///
/// The text must end in a closing bracket (see `run`), which stops every loop over blanks, digits
/// and words by itself; only strings and closing brackets have to look where the text ends.
template <typename Block>
class Formatter {
 public:
  // NOLINTNEXTLINE(*-member-init): of the stack of brackets only what was written is read
  Formatter(Output& out, std::string_view text, const char* readableEnd)
      : stream_(out, text, readableEnd) {}

  /// Formats the text from `begin` on; it must not be empty and end in a closing bracket.
  bool run(const char* begin) {
    Cursor cursor = skipBlanks(stream_.begin(begin));
    if (*cursor.in != '{' && *cursor.in != '[') return false;
    cursor = open(cursor);
    while (!cursor.failed() && depth_ > 0) {
      cursor = skipBlanks(cursor);
      if (closers_[depth_] == '}') cursor = name(cursor);
      if (!cursor.failed()) cursor = value(cursor);
    }
    if (cursor.failed()) return false;
    stream_.finish(cursor);
    return true;
  }

 private:
  /// Enough for most lines; writing some too many costs less than counting them.
  static constexpr std::size_t kBlanksAtOnce = 32;

  Cursor skipBlanks(Cursor cursor) const {
    if (static_cast<unsigned char>(*cursor.in) > ' ' || !isOfKind(*cursor.in, kBlank)) {
      return cursor;
    }
    ++cursor.in;
    if (static_cast<unsigned char>(*cursor.in) > ' ') return cursor;
    while (stream_.isReadable(cursor.in)) {
      const std::uint32_t nonBlanks = Block::load(cursor.in).nonBlanks();
      if (nonBlanks != 0) return {cursor.in + std::countr_zero(nonBlanks), cursor.out};
      cursor.in += Block::kSize;
    }
    while (isOfKind(*cursor.in, kBlank)) ++cursor.in;
    return cursor;
  }

  static char* writeLineBreak(char* out, std::size_t depth) {
    *out++ = '\n';
    char* const end = out + 2 * depth;
    do {
      std::memset(out, ' ', kBlanksAtOnce);
      out += kBlanksAtOnce;
    } while (out < end);
    return end;
  }

  /// At the name of a member; returns at its value.
  Cursor name(Cursor cursor) {
    if (*cursor.in != '"') return kFailed;
    cursor = copyString<Block>(stream_, cursor);
    if (cursor.failed()) return kFailed;
    cursor = skipBlanks(cursor);
    if (*cursor.in != ':') return kFailed;
    std::memcpy(cursor.out, " : ", 3);
    return skipBlanks({cursor.in + 1, cursor.out + 3});
  }

  /// At the first byte of a value; returns at the next item's line.
  Cursor value(Cursor cursor) {
    switch (*cursor.in) {
      case '"':
        return next(copyString<Block>(stream_, cursor));
      case '{':
      case '[':
        return open(cursor);
      case 't':
        return next(copyWord(cursor, "true"));
      case 'f':
        return next(copyWord(cursor, "false"));
      case 'n':
        return next(copyWord(cursor, "null"));
      default:
        return next(copyNumber(cursor));
    }
  }

  Cursor open(Cursor cursor) {
    if (depth_ == kJsonMaxDepth) return kFailed;
    cursor = stream_.withRoom(cursor);
    const char closer = *cursor.in == '{' ? '}' : ']';
    closers_[++depth_] = closer;
    *cursor.out++ = *cursor.in++;
    cursor = skipBlanks(cursor);
    if (*cursor.in != closer) return {cursor.in, writeLineBreak(cursor.out, depth_)};
    *cursor.out++ = '\n';  // an empty container has an empty line inside
    return next(cursor);
  }

  /// After a value: closes the containers that end here and begins the line of the next item.
  Cursor next(Cursor cursor) {
    if (cursor.failed()) return kFailed;
    for (;;) {
      cursor = stream_.withRoom(skipBlanks(cursor));
      if (*cursor.in == ',') {
        *cursor.out++ = ',';
        return {cursor.in + 1, writeLineBreak(cursor.out, depth_)};
      }
      if (*cursor.in != closers_[depth_]) return kFailed;
      cursor.out = writeLineBreak(cursor.out, --depth_);
      *cursor.out++ = *cursor.in++;
      const bool isAtEnd = cursor.in == stream_.end();
      if (isAtEnd || depth_ == 0) return isAtEnd && depth_ == 0 ? cursor : kFailed;
    }
  }

  Cursor copyWord(Cursor cursor, std::string_view word) const {
    if (stream_.remaining(cursor.in) <= word.size() ||
        std::memcmp(cursor.in, word.data(), word.size()) != 0) {
      return kFailed;
    }
    std::memcpy(cursor.out, word.data(), word.size());
    return {cursor.in + word.size(), cursor.out + word.size()};
  }

  Cursor copyNumber(Cursor cursor) {
    if (stream_.isReadable(cursor.in)) {
      const PlainNumber number = plainNumber<Block>(cursor.in);
      if (number.end != nullptr) {
        std::memcpy(cursor.out, cursor.in, kMaxPlainNumberSize);
        return {number.end, cursor.out + number.shownSize};
      }
    }
    return copyOddNumber(cursor);
  }

  Cursor copyOddNumber(Cursor cursor) {
    const NumberLiteral literal = scanNumber(cursor.in);
    if (literal.end == nullptr) return kFailed;
    if (!literal.isInteger) {
      const std::string_view text(literal.begin,
                                  static_cast<std::size_t>(literal.end - literal.begin));
      char* const end = writeShortestDecimal(text, cursor.out);
      if (end != nullptr) return {literal.end, end};
    }
    return stream_.copiedThrough(cursor, literal.end);
  }

  Stream stream_;
  std::size_t depth_ = 0;
  std::array<char, kJsonMaxDepth + 1> closers_;  // of the containers that are open, outermost at 1
};

/// `appendFormattedJson` with blocks of a given kind.
template <typename Block>
bool appendFormatted(Output& out, std::string_view text, const char* readableEnd) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  while (!text.empty() && isOfKind(text.back(), kBlank)) text.remove_suffix(1);
  if (text.empty() || (text.back() != '}' && text.back() != ']')) return false;
  return Formatter<Block>(out, text, readableEnd).run(text.data());
}

}  // namespace lumisk::json
