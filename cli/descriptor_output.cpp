#include "cli/descriptor_output.h"

#include <unistd.h>

#include <cerrno>

namespace lumisk {

// The window is written before it is read, so it is left as it comes.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
DescriptorOutput::DescriptorOutput(int descriptor) : descriptor_(descriptor) {
  setWindow({window_.data(), window_.size()});
}

Output::Window DescriptorOutput::drain(std::string_view filled) {
  write(filled);
  return {window_.data(), window_.size()};
}

bool DescriptorOutput::takeDirectly(std::string_view text) {
  write(text);
  return true;
}

void DescriptorOutput::write(std::string_view text) {
  while (!text.empty() && error_ == 0) {
    const ssize_t count = ::write(descriptor_, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
}

}  // namespace lumisk
