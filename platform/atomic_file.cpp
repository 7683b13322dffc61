#include "platform/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace lumisk {

namespace {

int writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

int fill(int descriptor, std::string_view text) {
  constexpr mode_t kReadableByAll = 0644;
  const int error = writeAll(descriptor, text);
  if (error != 0) return error;
  return fchmod(descriptor, kReadableByAll) == 0 && fsync(descriptor) == 0 ? 0 : errno;
}

}  // namespace

int writeFileAtomically(const std::string& path, std::string_view text) {
  std::string temporary = path + ".XXXXXX";
  const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
  if (descriptor < 0) return errno;
  int error = fill(descriptor, text);
  if (close(descriptor) != 0 && error == 0) error = errno;
  if (error == 0 && rename(temporary.c_str(), path.c_str()) != 0) error = errno;
  if (error != 0) unlink(temporary.c_str());
  return error;
}

}  // namespace lumisk
