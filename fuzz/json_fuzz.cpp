// Any bytes as JSON, in both kinds of blocks: they must agree, and what was laid out must stay as
// it is when it is laid out again. See CMakeLists.txt.

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "core/json_formatter.h"
#include "core/output.h"

namespace {

using namespace lumisk;

template <typename Block>
std::optional<std::string> formatted(std::string_view text) {
  StringOutput out(text.size());
  if (!json::appendFormatted<Block>(out, text, text.data() + text.size())) return std::nullopt;
  return out.take();
}

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view rest = text.substr(at);
    const bool isEntity = rest[0] == '&';
    result += !isEntity ? rest[0] : rest[1] == 'a' ? '&' : rest[1] == 'l' ? '<' : '>';
    if (isEntity) at += rest.find(';');
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto once = formatted<json::NativeBlock>(text);
  if (once != formatted<json::PortableBlock>(text)) std::abort();
  if (once && formatted<json::NativeBlock>(unescaped(*once)) != once) std::abort();
  return 0;
}
