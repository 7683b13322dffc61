#include "platform/terminal_text.h"

namespace lumisk {

std::string terminalText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    const bool isPair = byte == 0xC2 && next >= 0x80 && next <= 0x9F;
    const bool isControl = byte < 0x20 || byte == 0x7F;
    result += isControl || isPair ? '?' : text[i];
    if (isPair) ++i;
  }
  return result;
}

std::string complaintLine(std::string_view sentence) {
  return "lumisk: " + terminalText(sentence) + "\n";
}

}  // namespace lumisk
