#include "desktop/web_extension/page_address.h"

namespace lumisk::desktop {
namespace {

constexpr std::string_view kLoadKey = "?load=";
// Known to the scripts in desktop/pages, too.
constexpr std::string_view kBeginningFirst = "&show=beginning-first";
constexpr std::string_view kNoDiagrams = "&diagrams=none";

}  // namespace

std::string pageAddress(std::string_view fileUri, PageLoad load) {
  std::string address(fileUri);
  address += kLoadKey;
  address += std::to_string(load.number);
  if (load.showing == Showing::BeginningFirst) address += kBeginningFirst;
  if (load.diagrams == Diagrams::None) address += kNoDiagrams;
  return address;
}

bool isPageAddress(std::string_view address) {
  return address.starts_with("file:") && address.find(kLoadKey) != std::string_view::npos;
}

bool isWithoutDiagrams(std::string_view address) {
  return isPageAddress(address) && address.ends_with(kNoDiagrams);
}

}  // namespace lumisk::desktop
