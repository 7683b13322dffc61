#pragma once

#include "core/kernels/block.h"
#include "core/kernels/entity.h"
#include "core/kernels/kernel_set.h"
#include "core/kernels/table_characters.h"
#include "core/table_lines.h"

namespace lumisk {

/// The tags around the cells of one row, each as long as a store that writes it in one go.
struct TableTags {
  char nextCell[16];  ///< "</td><td>"
  char nextRow[32];   ///< "</td></tr><tr><td>"; below a header comes a row of data
};
inline constexpr std::size_t kCellTagLength = 4;  // "<td>"
inline constexpr std::size_t kNextCellLength = 9;
inline constexpr std::size_t kCloseRowLength = 10;  // "</td></tr>"
inline constexpr std::size_t kNextRowLength = 18;
inline constexpr TableTags kHeaderTags = {"</th><th>", "</th></tr><tr><td>"};
inline constexpr TableTags kDataTags = {"</td><td>", "</td></tr><tr><td>"};

/// One run of the table kernel. Text is copied up to the ends of cells and the brackets in it. Most
/// ends of cells are simple; the others, and all in a header, are looked at one by one. What is
/// taken off a cell's end is only known there, and then taken back from what was written, for which
/// the whole cell must lie in one window: when it does not, the cell is given up.
template <typename Bytes>
class TableRun {
 public:
  TableRun(TableCursor start, const char* inEnd, const char* outEnd, char separator)
      : start_(start),
        inEnd_(inEnd),
        outEnd_(outEnd),
        separator_(separator),
        isHeader_(start.isHeader),
        block_(start.in),
        text_(start.in) {}

  TableCursor run() {
    char* out = start_.out;
    if (!hasRoomForBlock(out)) return start_;
    __builtin_memcpy(out, isHeader_ ? "<th>" : "<td>", kCellTagLength);
    out += kCellTagLength;
    skipTrimmed();
    while (hasRoomForBlock(out)) {
      out = writeGroup(out);
      if (isDone_) return {inEnd_, out, isHeader_, false};
    }
    return lastCell(out);
  }

 private:
  // The text may be read up to a vector behind the block. The densest text is a row of one byte
  // after the other: two bytes in, nineteen out.
  static constexpr std::ptrdiff_t kReads = kBlockSize + Bytes::kSize + 1;
  static constexpr std::ptrdiff_t kWrites = kBlockSize * 10 + sizeof(TableTags) + Bytes::kSize;

  bool hasRoomForBlock(const char* out) const {
    return inEnd_ - block_ >= kReads && outEnd_ - out >= kWrites + (block_ - text_);
  }

  static bool isTrimmed(char character) { return character == '"' || character == '\r'; }

  /// The text of a cell starts behind what is taken off its front.
  void skipTrimmed() {
    while (text_ != inEnd_ && isTrimmed(*text_)) ++text_;
  }

  char* writeGroup(char* out) {
    const auto left = static_cast<std::size_t>(inEnd_ - block_ - kReads);
    const std::size_t count = least(TableGroup<Bytes>::kMost, left / kBlockSize + 1);
    const TableGroup<Bytes> group(block_, count, separator_);
    return group.hasQuotes() ? writeBlocks<true>(group, count, out)
                             : writeBlocks<false>(group, count, out);
  }

  template <bool kHasQuotes>
  char* writeBlocks(const TableGroup<Bytes>& group, std::size_t count, char* out) {
    for (std::size_t i = 0; i < count && hasRoomForBlock(out); ++i) {
      const char* next = block_ + kBlockSize;
      CellEnds ends = kHasQuotes ? group.quotedCellEnds(i) : group.plainCellEnds(i);
      if (isHeader_) ends.simple = 0;
      out = writeBlock<kHasQuotes>(group.specials(i), ends, out);
      if (block_ != next) break;
    }
    return out;
  }

  template <bool kHasQuotes>
  char* writeBlock(std::uint64_t specials, const CellEnds& ends, char* out) {
    while (specials != 0) {
      const std::size_t place = Bytes::lowestBit(specials);
      const char* special = block_ + place;
      specials &= specials - 1;
      out = copyRun<Bytes>(out, text_, static_cast<std::size_t>(special - text_));
      text_ = special + 1;
      if ((ends.simple >> place & 1) != 0) {
        if (kHasQuotes) {
          out -= ends.afterQuote >> place & 1;
          text_ += ends.beforeQuote >> place & 1;
        }
        out = writeTags(*special, kDataTags, out);
      } else {
        const char* line = special + 1;
        out = writeApart(*special, line, out);
        if (isDone_) return out;
        if (line >= block_ + kBlockSize) {
          block_ = line;
          return out;
        }
        specials &= ~std::uint64_t{0} << (line - block_);
      }
    }
    block_ += kBlockSize;
    return out;
  }

  static char* writeTags(char special, const TableTags& tags, char* out) {
    if (special == '\n') {
      __builtin_memcpy(out, tags.nextRow, sizeof tags.nextRow);
      return out + kNextRowLength;
    }
    __builtin_memcpy(out, tags.nextCell, sizeof tags.nextCell);
    return out + kNextCellLength;
  }

  /// Writes `special`, which stands before `next`; the text up to it is written up to `out`. Moves
  /// `next` behind blank lines.
  char* writeApart(char special, const char*& next, char* out) {
    if (special == '<' || special == '>') return writeEntity<Bytes>(out, special);
    out = trimmedEnd(out);
    char* written = writeTags(special, isHeader_ ? kHeaderTags : kDataTags, out);
    if (special == '\n') {
      isHeader_ = false;
      next = text_ = firstKeptLine(next, inEnd_);
      isDone_ = text_ == inEnd_;
      if (isDone_) return out + kCloseRowLength;
    }
    skipTrimmed();
    return written;
  }

  /// A tag always stands before the cell, so this stops there.
  static char* trimmedEnd(char* out) {
    while (isTrimmed(out[-1])) --out;
    return out;
  }

  /// The cell that was begun last. Its tag is the last one written, as the brackets of text are
  /// written otherwise.
  TableCursor lastCell(char* out) const {
    do {
      --out;
    } while (*out != '<');
    const char* cell = text_;
    while (cell != start_.in && cell[-1] != separator_ && cell[-1] != '\n') --cell;
    return {cell, out, isHeader_, true};
  }

  const TableCursor start_;
  const char* const inEnd_;
  const char* const outEnd_;
  const char separator_;
  bool isHeader_;
  bool isDone_ = false;
  const char* block_;  // what is looked at next
  const char* text_;   // what is copied next; may lie before the block or behind it
};

template <typename Bytes>
TableCursor writeRowsInBlocks(TableCursor start, const char* inEnd, const char* outEnd,
                              char separator) {
  return TableRun<Bytes>(start, inEnd, outEnd, separator).run();
}

}  // namespace lumisk
