#include "desktop/service/item_resolver.h"

#include <algorithm>

namespace lumisk::desktop {

namespace {

/// Far beyond what any file system can name.
constexpr std::size_t kLongestAddress = 65'536;

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isSchemeCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

std::string_view schemeOf(std::string_view uri) {
  const std::string_view scheme = uri.substr(0, uri.find(':'));
  if (scheme.size() == uri.size() || scheme.empty() || !isLetter(scheme.front())) return {};
  return std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter) ? scheme : "";
}

}  // namespace

std::optional<ItemOrReason> resolveWithoutAsking(std::string_view uri) {
  const std::string_view scheme = schemeOf(uri);
  if (scheme.empty() || uri.size() > kLongestAddress) return NoItemReason::BadAddress;
  if (scheme != "file") return std::nullopt;
  if (std::optional<FileURL> url = FileURL::fromString(uri)) return *std::move(url);
  return NoItemReason::BadAddress;
}

}  // namespace lumisk::desktop
