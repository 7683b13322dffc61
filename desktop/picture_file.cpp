#include "desktop/picture_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string_view>

#include "platform/file_descriptor.h"

namespace lumisk::desktop {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";

bool isPicture(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.isOpen()) return false;
  std::array<char, kSignature.size()> start{};
  const ssize_t size = ::read(file.get(), start.data(), start.size());
  return size == static_cast<ssize_t>(start.size()) &&
         std::string_view(start.data(), start.size()) == kSignature;
}

}  // namespace

std::optional<std::string> whyNotWritable(const std::string& input, const std::string& output) {
  struct stat there = {};
  if (::stat(output.c_str(), &there) != 0) return std::nullopt;
  struct stat shown = {};
  if (::stat(input.c_str(), &shown) == 0 && shown.st_dev == there.st_dev &&
      shown.st_ino == there.st_ino)
    return "'" + output + "' is the item itself; the picture needs a file of its own";
  if (S_ISDIR(there.st_mode)) return "'" + output + "' is a folder";
  // It is written beside and then takes the name over, which a device or a pipe must not lose.
  if (!S_ISREG(there.st_mode)) return "'" + output + "' is no file; it stays as it is";
  if (there.st_size == 0 || isPicture(output)) return std::nullopt;
  return "'" + output + "' is there and is no PNG picture; it stays as it is";
}

}  // namespace lumisk::desktop
