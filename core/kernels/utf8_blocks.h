#pragma once

#include "core/kernels/block.h"

namespace lumisk {

// Every ill-formed sequence but two shows in two neighbouring bytes: in the high half of the first,
// its low half, and the high half of the second. Three tables of sixteen entries say which faults
// each half allows; a fault that all three allow is there. The two others are a third or fourth
// byte that is missing or one too many; they show when the place of each continuation byte is
// compared with where the leading bytes want one (Keiser and Lemire, "Validating UTF-8 In Less Than
// One Instruction Per Byte", 2021).

enum Utf8Fault : std::uint8_t {
  kMissing = 1 << 0,        // a leading byte, and no continuation
  kStray = 1 << 1,          // an ASCII byte, then a continuation
  kOverlong3 = 1 << 2,      // E0, then 80 to 9F
  kTooLarge = 1 << 3,       // F4 and 90 up, or F5 up
  kSurrogate = 1 << 4,      // ED, then A0 to BF
  kOverlong2 = 1 << 5,      // C0 or C1
  kOverlong4 = 1 << 6,      // F0, then 80 to 8F; shared with F5 up, then 80 to 8F
  kContinuations = 1 << 7,  // two in a row: right where a third or fourth byte is due
};
inline constexpr std::uint8_t kAnyLowHalf = kMissing | kStray | kContinuations;
inline constexpr std::uint8_t kTooLargeLow = kAnyLowHalf | kTooLarge | kOverlong4;
inline constexpr std::uint8_t kAnyContinuation = kStray | kOverlong2 | kContinuations;

inline constexpr std::uint8_t kFirstHigh[16] = {
    kStray,
    kStray,
    kStray,
    kStray,
    kStray,
    kStray,
    kStray,
    kStray,  // 0 to 7: ASCII
    kContinuations,
    kContinuations,
    kContinuations,
    kContinuations,                      // 8 to B
    kMissing | kOverlong2,               // C
    kMissing,                            // D
    kMissing | kOverlong3 | kSurrogate,  // E
    kMissing | kTooLarge | kOverlong4,   // F
};
inline constexpr std::uint8_t kFirstLow[16] = {
    kAnyLowHalf | kOverlong3 | kOverlong2 | kOverlong4,  // C0, E0, F0
    kAnyLowHalf | kOverlong2,                            // C1
    kAnyLowHalf,
    kAnyLowHalf,
    kAnyLowHalf | kTooLarge,  // F4
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow,
    kTooLargeLow | kSurrogate,  // ED
    kTooLargeLow,
    kTooLargeLow,
};
inline constexpr std::uint8_t kSecondHigh[16] = {
    kMissing,
    kMissing,
    kMissing,
    kMissing,
    kMissing,
    kMissing,
    kMissing,
    kMissing,
    kAnyContinuation | kOverlong3 | kOverlong4,  // 80 to 8F
    kAnyContinuation | kOverlong3 | kTooLarge,   // 90 to 9F
    kAnyContinuation | kSurrogate | kTooLarge,   // A0 to BF
    kAnyContinuation | kSurrogate | kTooLarge,
    kMissing,
    kMissing,
    kMissing,
    kMissing,
};

/// Looks at a text block by block. `Bytes` offers, besides what Block needs:
///
///     Vector table(const uint8_t[16])           ready for `lookUp`
///     Vector lookUp(Vector table, Vector v)     the entry for each byte's low half, in v 0 to 15
///     Vector lowHalves(Vector), highHalves(Vector)
///     Vector both, differing(Vector, Vector)    bitwise and, xor
///     Vector lessSaturated(Vector, Vector)      a - b, not below 0
///     Vector before<N>(Vector v, Vector last)   v moved N places on, filled up from `last`
///     bool isAscii(Vector), isZero(Vector)
template <typename Bytes>
class Utf8Check {
 public:
  using Vector = typename Bytes::Vector;

  void next(const char* at) {
    const Block<Bytes> block(at);
    Vector all = block.parts[0];
    for (std::size_t i = 1; i < Block<Bytes>::kCount; ++i) {
      all = Bytes::either(all, block.parts[i]);
    }
    if (Bytes::isAscii(all)) {
      faults_ = Bytes::either(faults_, unfinished_);
      unfinished_ = Bytes::all(0);
      last_ = Bytes::all(0);
    } else {
      for (const Vector& part : block.parts) nextVector(part);
      unfinished_ = unfinishedAtEnd(last_);
    }
  }

  bool hasFaults() const { return !Bytes::isZero(faults_); }
  bool isUnfinished() const { return !Bytes::isZero(unfinished_); }

 private:
  void nextVector(Vector bytes) {
    const Vector first = Bytes::template before<1>(bytes, last_);
    const Vector faults =
        Bytes::both(Bytes::both(Bytes::lookUp(Bytes::table(kFirstHigh), Bytes::highHalves(first)),
                                Bytes::lookUp(Bytes::table(kFirstLow), Bytes::lowHalves(first))),
                    Bytes::lookUp(Bytes::table(kSecondHigh), Bytes::highHalves(bytes)));
    // Top bit where a third or a fourth byte is due; kContinuations is that bit.
    const Vector third = Bytes::lessSaturated(Bytes::template before<2>(bytes, last_),
                                              Bytes::all(static_cast<char>(0xE0 - 0x80)));
    const Vector fourth = Bytes::lessSaturated(Bytes::template before<3>(bytes, last_),
                                               Bytes::all(static_cast<char>(0xF0 - 0x80)));
    const Vector due =
        Bytes::both(Bytes::either(third, fourth), Bytes::all(static_cast<char>(0x80)));
    faults_ = Bytes::either(faults_, Bytes::differing(due, faults));
    last_ = bytes;
  }

  /// Not zero when a sequence runs past the end of `bytes`.
  static Vector unfinishedAtEnd(Vector bytes) {
    std::uint8_t most[Bytes::kSize];
    for (std::uint8_t& byte : most) byte = 0xFF;
    most[Bytes::kSize - 3] = 0xF0 - 1;
    most[Bytes::kSize - 2] = 0xE0 - 1;
    most[Bytes::kSize - 1] = 0xC0 - 1;
    char limits[Bytes::kSize];
    __builtin_memcpy(limits, most, sizeof limits);
    return Bytes::lessSaturated(bytes, Bytes::load(limits));
  }

  Vector faults_ = Bytes::all(0);
  Vector last_ = Bytes::all(0);        // the vector before
  Vector unfinished_ = Bytes::all(0);  // what it leaves open
};

/// Long enough that asking for faults is no cost, short enough that a large file which is no text
/// is given up at its start.
inline constexpr std::ptrdiff_t kUtf8Stretch = 64 * kBlockSize;

template <typename Bytes>
bool isUtf8InBlocks(const char* in, const char* inEnd) {
  Utf8Check<Bytes> check;
  while (inEnd - in >= std::ptrdiff_t{kBlockSize}) {
    const std::ptrdiff_t whole = (inEnd - in) & ~(std::ptrdiff_t{kBlockSize} - 1);
    const char* stretchEnd = in + (whole < kUtf8Stretch ? whole : kUtf8Stretch);
    for (; in != stretchEnd; in += kBlockSize) check.next(in);
    if (check.hasFaults()) return false;
  }
  // Zeros after the text are ASCII, which a sequence that ends too soon is followed by.
  char padded[kBlockSize] = {};
  if (in != inEnd) __builtin_memcpy(padded, in, static_cast<std::size_t>(inEnd - in));
  check.next(padded);
  return !check.hasFaults() && !check.isUnfinished();
}

}  // namespace lumisk
