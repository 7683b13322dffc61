#include "core/escape.h"

#include <algorithm>

#include "core/kernels/kernel_set.h"
#include "core/output.h"

namespace lumisk {

namespace {

// What fits the first-level cache is read from memory once and counted twice.
constexpr std::size_t kCountedAtOnce = std::size_t{16} * 1024;

constexpr std::size_t kAmpersandGrowth = std::string_view("&amp;").size() - 1;
constexpr std::size_t kBracketGrowth = std::string_view("&lt;").size() - 1;

std::size_t growth(const char* in, const char* inEnd, Escaping escaping) {
  const std::size_t brackets = kernels().countEither(in, inEnd, '<', '>');
  const std::size_t ampersands =
      escaping == Escaping::Html ? kernels().countEither(in, inEnd, '&', '&') : 0;
  return kBracketGrowth * brackets + kAmpersandGrowth * ampersands;
}

}  // namespace

void appendEscaped(Output& out, std::string_view text, Escaping escaping) {
  EscapeKernel* escape =
      escaping == Escaping::Html ? kernels().escapeMarkup : kernels().escapeAngleBrackets;
  const char* in = text.data();
  const char* inEnd = in + text.size();
  while (in != inEnd) {
    char* to = out.room(kEscapeRoom);
    const KernelProgress progress = escape(in, inEnd, to, out.roomEnd());
    in = progress.in;
    out.advance(progress.out);
  }
}

std::string escaped(std::string_view text, Escaping escaping) {
  StringOutput out(escapedSize(text, escaping));
  appendEscaped(out, text, escaping);
  return out.take();
}

std::size_t escapedSize(std::string_view text, Escaping escaping) {
  std::size_t size = text.size();
  while (!text.empty()) {
    const std::string_view part = text.substr(0, kCountedAtOnce);
    size += growth(part.data(), part.data() + part.size(), escaping);
    text.remove_prefix(part.size());
  }
  return size;
}

}  // namespace lumisk
