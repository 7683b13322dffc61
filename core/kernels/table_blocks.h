#pragma once

#include "core/kernels/block.h"
#include "core/kernels/entity.h"
#include "core/kernels/kernel_set.h"
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

/// One run of the table kernel. Text is copied block by block, up to the separators, line feeds and
/// brackets in it. What is taken off a cell's end is only known there, and then taken back from
/// what was written, for which the whole cell must lie in one window: when it does not, the cell is
/// given up.
template <typename Bytes>
class TableRun {
 public:
  TableRun(TableCursor start, const char* inEnd, const char* outEnd, char separator)
      : inEnd_(inEnd),
        outEnd_(outEnd),
        separator_(separator),
        isHeader_(start.isHeader),
        block_(start.in),
        cell_(start.in),
        cellOut_(start.out) {}

  TableCursor run() {
    if (!hasRoomForBlock(cellOut_)) return cursorAtCell();
    char* out = openCell();
    while (hasRoomForBlock(out)) {
      out = writeBlock(out);
      if (isDone_) return {inEnd_, out, isHeader_, false};
    }
    return cursorAtCell();
  }

 private:
  // A block may be read a vector and a byte too far. The densest text is a row of one byte after
  // the other: two bytes in, nineteen out.
  static constexpr std::ptrdiff_t kReads = kBlockSize + Bytes::kSize + 1;
  static constexpr std::ptrdiff_t kWrites = kBlockSize * 10 + 32 + Bytes::kSize;

  bool hasRoomForBlock(const char* out) const {
    return inEnd_ - block_ >= kReads && outEnd_ - out >= kWrites;
  }

  TableCursor cursorAtCell() const { return {cell_, cellOut_, isHeader_, true}; }

  static bool isTrimmed(char character) { return character == '"' || character == '\r'; }

  char* openCell() {
    __builtin_memcpy(cellOut_, isHeader_ ? "<th>" : "<td>", kCellTagLength);
    startText();
    return cellOut_ + kCellTagLength;
  }

  /// The text of the cell starts behind what is taken off its front.
  void startText() {
    text_ = cell_;
    while (text_ != inEnd_ && isTrimmed(*text_)) ++text_;
  }

  char* writeBlock(char* out) {
    const char* end = block_ + kBlockSize;
    const auto isSpecial = [this](typename Bytes::Vector bytes) {
      return Bytes::either(
          Bytes::either(isAngleBracket<Bytes>(bytes), Bytes::equal(bytes, Bytes::all('\n'))),
          Bytes::equal(bytes, Bytes::all(separator_)));
    };
    std::uint64_t specials = Block<Bytes>(block_).bitsWhere(isSpecial);
    while (specials != 0) {
      const char* special = block_ + Bytes::lowestBit(specials);
      specials &= specials - 1;
      out = copyRun<Bytes>(out, text_, static_cast<std::size_t>(special - text_));
      if (*special == separator_) {
        out = endCell(out, special);
      } else if (*special == '\n') {
        out = endRow(out, special);
        if (isDone_) return out;
        if (cell_ != special + 1) return skipTo(cell_, out);
      } else {
        out = writeEntity<Bytes>(out, *special);
        text_ = special + 1;
      }
    }
    if (text_ < end) {
      out = copyRun<Bytes>(out, text_, static_cast<std::size_t>(end - text_));
      text_ = end;
    }
    block_ = end;
    return out;
  }

  char* skipTo(const char* line, char* out) {
    block_ = line;
    return out;
  }

  /// A tag always stands before the cell, so this stops there.
  static char* trimmedEnd(char* out) {
    while (isTrimmed(out[-1])) --out;
    return out;
  }

  const TableTags& tags() const { return isHeader_ ? kHeaderTags : kDataTags; }

  char* endCell(char* out, const char* separator) {
    out = trimmedEnd(out);
    __builtin_memcpy(out, tags().nextCell, sizeof(TableTags::nextCell));
    out += kNextCellLength;
    cell_ = separator + 1;
    cellOut_ = out - kCellTagLength;
    startText();
    return out;
  }

  /// Ends the row and starts the next one, if there is one.
  char* endRow(char* out, const char* lineFeed) {
    out = trimmedEnd(out);
    __builtin_memcpy(out, tags().nextRow, sizeof(TableTags::nextRow));
    isHeader_ = false;
    cell_ = lineFeed + 1;
    if (static_cast<signed char>(*cell_) <= ' ') cell_ = firstKeptLine(cell_, inEnd_);
    if (cell_ == inEnd_) {
      isDone_ = true;
      return out + kCloseRowLength;
    }
    out += kNextRowLength;
    cellOut_ = out - kCellTagLength;
    startText();
    return out;
  }

  const char* const inEnd_;
  const char* const outEnd_;
  const char separator_;
  bool isHeader_;
  bool isDone_ = false;
  const char* block_;           // what is looked at next
  const char* text_ = nullptr;  // what is copied next; may lie beyond the block
  const char* cell_;            // where the current cell starts
  char* cellOut_;               // where its tag stands
};

template <typename Bytes>
TableCursor writeRowsInBlocks(TableCursor start, const char* inEnd, const char* outEnd,
                              char separator) {
  return TableRun<Bytes>(start, inEnd, outEnd, separator).run();
}

}  // namespace lumisk
