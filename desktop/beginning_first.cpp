#include "desktop/beginning_first.h"

#include "desktop/host_scripts.h"

namespace lumisk::desktop {
namespace {

/// Shorter ones are complete within a frame or two; a fourth of it is the fixed text.
constexpr std::size_t kLongPage = std::size_t{16} * 1024;  // bytes

}  // namespace

Showing showingOfCode(std::size_t size) {
  return size < kLongPage ? Showing::AtOnce : Showing::BeginningFirst;
}

void showAll(WebKitWebView* page) {
  runInPage(page, "dispatchEvent(new Event('lumisk-show-all'))");
}

}  // namespace lumisk::desktop
