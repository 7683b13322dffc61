#include "core/json_format.h"

#include <algorithm>

#include "core/json_formatter.h"

namespace lumisk {

bool appendFormattedJson(Output& out, std::string_view text) {
  return json::appendFormatted<json::NativeBlock>(out, text, text.data() + text.size());
}

bool appendFormattedJson(Output& out, std::string_view text, std::string_view surrounding) {
  // Looking no further than this keeps the work linear when none of the records is closed.
  constexpr std::size_t kLookAhead = 64;
  const char* const end = text.data() + text.size();
  const auto behind = static_cast<std::size_t>(surrounding.data() + surrounding.size() - end);
  return json::appendFormatted<json::NativeBlock>(out, text, end + std::min(behind, kLookAhead));
}

}  // namespace lumisk
