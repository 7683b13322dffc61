#include "core/line_break.h"

#include <bit>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lumisk {

namespace {

/// The size of the line break that `text` has at `at`, 0 when it is none.
std::size_t lineBreakSize(std::string_view text, std::size_t at) {
  const char first = text[at];
  if (first >= '\n' && first <= '\r') return 1;
  if (first == '\xC2') return text.substr(at, 2) == "\xC2\x85" ? 2 : 0;
  if (first != '\xE2') return 0;
  const std::string_view three = text.substr(at, 3);
  return three == "\xE2\x80\xA8" || three == "\xE2\x80\xA9" ? 3 : 0;
}

#if defined(__SSE2__)

constexpr std::size_t kBlockSize = 16;

__m128i load(const char* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); }
__m128i equal(__m128i bytes, int byte) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(byte)));
}

/// Bit i is set when a line break begins at `from + i`. Reads two bytes more than a block.
std::uint32_t lineBreaks(const char* from) {
  const __m128i first = load(from);
  const __m128i second = load(from + 1);
  const __m128i third = load(from + 2);
  const __m128i fromLineFeed = _mm_sub_epi8(first, _mm_set1_epi8('\n'));
  const __m128i one = _mm_cmpeq_epi8(_mm_min_epu8(fromLineFeed, _mm_set1_epi8(3)), fromLineFeed);
  const __m128i two = _mm_and_si128(equal(first, 0xC2), equal(second, 0x85));
  const __m128i separator = equal(_mm_or_si128(third, _mm_set1_epi8(1)), 0xA9);
  const __m128i three =
      _mm_and_si128(_mm_and_si128(equal(first, 0xE2), equal(second, 0x80)), separator);
  return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_or_si128(one, _mm_or_si128(two, three))));
}

/// The first place from `from` on where a line break may begin.
std::size_t skipPlainBlocks(std::string_view text, std::size_t from) {
  for (; text.size() - from >= kBlockSize + 2; from += kBlockSize) {
    const std::uint32_t breaks = lineBreaks(text.data() + from);
    if (breaks != 0) return from + static_cast<std::size_t>(std::countr_zero(breaks));
  }
  return from;
}

#else

std::size_t skipPlainBlocks(std::string_view, std::size_t from) { return from; }

#endif

}  // namespace

LineBreak findLineBreak(std::string_view text, std::size_t from) {
  for (std::size_t at = skipPlainBlocks(text, from); at < text.size(); ++at) {
    if (const std::size_t size = lineBreakSize(text, at); size != 0) return {at, size};
  }
  return {text.size(), 0};
}

}  // namespace lumisk
