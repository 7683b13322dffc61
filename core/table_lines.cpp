#include "core/table_lines.h"

#include "core/whitespace.h"

namespace lumisk {

const char* firstKeptLine(const char* at, const char* end) {
  const char* line = at;
  while (at != end) {
    if (*at == '\n') {
      line = ++at;
    } else if (const std::size_t blank =
                   leadingBlankSize({at, static_cast<std::size_t>(end - at)})) {
      at += blank;
    } else {
      return line;
    }
  }
  return end;
}

}  // namespace lumisk
