#include "platform/headless/hidden_names.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <string>

namespace lumisk {
namespace {

/// Lists are written by hand or by a package; this is far more than any of them and bounds what a
/// hostile folder can make us read.
constexpr std::size_t kMaxListSize = 1 << 20;

std::string readUpTo(int descriptor, std::size_t limit) {
  std::string bytes(limit, '\0');
  std::size_t used = 0;
  while (used < limit) {
    const ssize_t count = read(descriptor, bytes.data() + used, limit - used);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    used += static_cast<std::size_t>(count);
  }
  bytes.resize(used);
  return bytes;
}

/// The text of the list at `path`; empty when there is none. A pipe planted there does not block.
std::string readList(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return {};
  struct stat status {};
  const bool isFile = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  std::string text = isFile ? readUpTo(descriptor, kMaxListSize) : std::string();
  close(descriptor);
  return text;
}

using NameSet = std::set<std::string, std::less<>>;

NameSet linesOf(std::string_view text) {
  NameSet lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    if (!line.empty()) lines.emplace(line);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  return lines;
}

}  // namespace

std::function<bool(std::string_view)> HeadlessHiddenNames::inFolder(
    std::string_view folderPath) const {
  auto listed =
      std::make_shared<const NameSet>(linesOf(readList(std::string(folderPath) + "/.hidden")));
  return
      [listed](std::string_view name) { return name.starts_with('.') || listed->contains(name); };
}

}  // namespace lumisk
