#pragma once

#include "core/kernels/block.h"

namespace lumisk {

/// The bits of the characters that follow, or precede, those in `bits`; one comes from the block
/// beside it.
static constexpr std::uint64_t following(std::uint64_t bits, std::uint64_t blockBefore) {
  return bits << 1 | blockBefore >> (kBlockSize - 1);
}
static constexpr std::uint64_t preceding(std::uint64_t bits, std::uint64_t blockAfter) {
  return bits >> 1 | blockAfter << (kBlockSize - 1);
}

/// The ends of cells in one block, a bit each, by what has to be done there.
struct CellEnds {
  std::uint64_t simple;       ///< the tags are written, and the quotes below are taken off
  std::uint64_t afterQuote;   ///< one quote before it, where it is simple
  std::uint64_t beforeQuote;  ///< and one behind it
};

/// A number of blocks. Their characters are found before any is written: the loop over those of one
/// block ends in a branch that cannot be foreseen, behind which the next ones would be waited for.
template <typename Bytes>
class TableGroup {
 public:
  static constexpr std::size_t kMost = 8;

  /// One byte more than `count` blocks is read.
  // The lists are filled as far as they are read; to clear them would cost more than that.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
  TableGroup(const char* at, std::size_t count, char separator) {
    std::uint64_t notSimple = 0;
    for (std::size_t i = 0; i < count; ++i) notSimple |= find(i, at + i * kBlockSize, separator);
    if (notSimple != 0) findQuotes(at, count);
  }

  bool hasQuotes() const { return hasQuotes_; }
  /// The ends of cells, and angle brackets.
  std::uint64_t specials(std::size_t i) const { return specials_[i]; }
  CellEnds plainCellEnds(std::size_t i) const { return {simple_[i], 0, 0}; }
  CellEnds quotedCellEnds(std::size_t i) const {
    return {simple_[i], afterQuote_[i], beforeQuote_[i]};
  }

 private:
  using Vector = typename Bytes::Vector;
  // Of all blocks, with none before and behind them.
  using Blocks = std::uint64_t[kMost + 2];

  /// Returns the ends that are not simple, as far as plain characters tell: these are ASCII above
  /// the quote, which are no blanks and never taken off a cell.
  std::uint64_t find(std::size_t i, const char* at, char separator) {
    const Block<Bytes> block(at);
    const std::uint64_t ends = block.bitsWhere([separator](Vector bytes) {
      return Bytes::either(Bytes::equal(bytes, Bytes::all(separator)),
                           Bytes::equal(bytes, Bytes::all('\n')));
    });
    specials_[i] = ends | block.bitsWhere(isAngleBracket<Bytes>);
    const std::uint64_t plain =
        block.bitsWhere([](Vector bytes) { return Bytes::above(bytes, '"'); });
    const std::uint64_t isNextPlain = static_cast<signed char>(at[kBlockSize]) > '"' ? 1 : 0;
    simple_[i] =
        ends & following(plain, i == 0 ? 0 : plain_[i - 1]) & preceding(plain, isNextPlain);
    ends_[i] = ends;
    plain_[i] = plain;
    return ends & ~simple_[i];
  }

  /// Makes those simple too that have a quote beside them, and content behind that.
  void findQuotes(const char* at, std::size_t count) {
    Blocks quotes = {};
    Blocks content = {};
    Blocks plain = {};
    for (std::size_t i = 0; i < count; ++i) {
      quotes[i + 1] = Block<Bytes>(at + i * kBlockSize).bitsWhere([](Vector bytes) {
        return Bytes::equal(bytes, Bytes::all('"'));
      });
      content[i + 1] = plain_[i] & ~ends_[i];
      plain[i + 1] = plain_[i];
      hasQuotes_ |= quotes[i + 1] != 0;
    }
    if (!hasQuotes_) return;
    for (std::size_t i = 0; i < count; ++i) {
      afterQuote_[i] = afterClosing(quotes + i, content + i);
      beforeQuote_[i] = beforeOpening(quotes + i, content + i);
      simple_[i] = ends_[i] & (afterQuote_[i] | following(plain[i + 1], plain[i])) &
                   (beforeQuote_[i] | preceding(plain[i + 1], plain[i + 2]));
    }
  }

  // Of three blocks in a row, for the one in the middle: what follows a quote that follows content,
  // and what precedes a quote that precedes it.
  static std::uint64_t afterClosing(const std::uint64_t* quotes, const std::uint64_t* content) {
    return following(quotes[1] & following(content[1], content[0]), quotes[0] & content[0] << 1);
  }
  static std::uint64_t beforeOpening(const std::uint64_t* quotes, const std::uint64_t* content) {
    return preceding(quotes[1] & preceding(content[1], content[2]), quotes[2] & content[2] >> 1);
  }

  bool hasQuotes_ = false;
  std::uint64_t specials_[kMost];
  std::uint64_t simple_[kMost];
  std::uint64_t ends_[kMost];
  std::uint64_t plain_[kMost];
  std::uint64_t afterQuote_[kMost];
  std::uint64_t beforeQuote_[kMost];
};

}  // namespace lumisk
