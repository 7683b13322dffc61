#include "core/utf8.h"

#include "core/kernels/kernel_set.h"
#include "core/utf8_sequence.h"

namespace lumisk {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

constexpr unsigned byteAt(const char* at) { return static_cast<unsigned char>(*at); }

constexpr bool isWithin(unsigned byte, unsigned low, unsigned high) {
  return low <= byte && byte <= high;
}

/// How many bytes a sequence has that starts with `lead`; 0 when none does.
constexpr std::size_t lengthByLead(unsigned lead) {
  if (lead < 0x80) return 1;
  if (isWithin(lead, 0xC2, 0xDF)) return 2;
  if (isWithin(lead, 0xE0, 0xEF)) return 3;
  if (isWithin(lead, 0xF0, 0xF4)) return 4;
  return 0;
}

/// The second byte carries the bounds: what is overlong, a surrogate, or above U+10FFFF.
constexpr bool isSecond(unsigned lead, unsigned byte) {
  switch (lead) {
    case 0xE0:
      return isWithin(byte, 0xA0, 0xBF);
    case 0xED:
      return isWithin(byte, 0x80, 0x9F);
    case 0xF0:
      return isWithin(byte, 0x90, 0xBF);
    case 0xF4:
      return isWithin(byte, 0x80, 0x8F);
    default:
      return isWithin(byte, 0x80, 0xBF);
  }
}

}  // namespace

std::size_t utf8SequenceLength(const char* at, const char* end) {
  if (at == end) return 0;
  const unsigned lead = byteAt(at);
  const std::size_t length = lengthByLead(lead);
  if (length < 2) return length;
  if (static_cast<std::size_t>(end - at) < length || !isSecond(lead, byteAt(at + 1))) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!isWithin(byteAt(at + i), 0x80, 0xBF)) return 0;
  }
  return length;
}

bool isValidUtf8(std::string_view bytes) {
  return kernels().isUtf8(bytes.data(), bytes.data() + bytes.size());
}

bool canBeginUtf8(std::string_view bytes) {
  // The lead byte of a sequence that is cut off is one of the last three.
  for (std::size_t kept = 1; kept <= 3 && kept <= bytes.size(); ++kept) {
    const std::size_t length = lengthByLead(byteAt(bytes.data() + bytes.size() - kept));
    if (length == 0) continue;
    if (length > kept) bytes.remove_suffix(kept);
    break;
  }
  return isValidUtf8(bytes);
}

std::optional<std::string_view> decodedUtf8(std::string_view bytes) {
  if (!isValidUtf8(bytes)) return std::nullopt;
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  return bytes;
}

std::string withReplacementCharacters(std::string_view bytes) {
  if (isValidUtf8(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + kReplacementCharacter.size());
  const char* end = bytes.data() + bytes.size();
  for (const char* at = bytes.data(); at != end;) {
    const std::size_t length = utf8SequenceLength(at, end);
    text.append(length == 0 ? kReplacementCharacter : std::string_view(at, length));
    at += length == 0 ? 1 : length;
  }
  return text;
}

void appendUtf8(std::string& out, char32_t point) {
  const auto append = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  const auto appendContinuation = [&append, point](int shift) {
    append(0x80U | ((point >> shift) & 0x3FU));
  };
  if (point < 0x80) {
    append(point);
  } else if (point < 0x800) {
    append(0xC0U | (point >> 6));
    appendContinuation(0);
  } else if (point < 0x10000) {
    append(0xE0U | (point >> 12));
    appendContinuation(6);
    appendContinuation(0);
  } else {
    append(0xF0U | (point >> 18));
    appendContinuation(12);
    appendContinuation(6);
    appendContinuation(0);
  }
}

}  // namespace lumisk
