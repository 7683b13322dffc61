#include "cli/descriptor_output.h"

#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <new>

namespace lumisk {

namespace {

// The first block of a trial holds a small document, the others are whole huge pages.
constexpr std::size_t kFirstBlockSize = std::size_t{256} * 1024;
constexpr std::size_t kHugePage = std::size_t{2} * 1024 * 1024;
constexpr std::size_t kBlockSize = 2 * kHugePage;

}  // namespace

// The window is written before it is read, so it is left as it comes.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
DescriptorOutput::DescriptorOutput(int descriptor) : descriptor_(descriptor) {
  setWindow({window_.data(), window_.size()});
}

Output::Window DescriptorOutput::drain(std::string_view filled) {
  if (!trial_.empty()) {
    trial_.back().used = filled.size();
    return addBlock();
  }
  write(filled);
  return {window_.data(), window_.size()};
}

Output::Window DescriptorOutput::addBlock() {
  const std::size_t size = trial_.empty() ? kFirstBlockSize : kBlockSize;
  auto* const memory = static_cast<char*>(size < kHugePage ? std::malloc(size)
                                                           : std::aligned_alloc(kHugePage, size));
  if (memory == nullptr) throw std::bad_alloc();
  // Advice only: where the kernel has no huge pages this is a little slower.
  if (size >= kHugePage) ::madvise(memory, size, MADV_HUGEPAGE);
  trial_.push_back({std::unique_ptr<char, Free>(memory)});
  return {memory, size};
}

bool DescriptorOutput::beginTrial() {
  replaceWindow();
  setWindow(addBlock());
  return true;
}

void DescriptorOutput::endTrial(bool isWanted) {
  trial_.back().used = filled().size();
  for (Block& block : trial_) {
    if (isWanted) write({block.memory.get(), block.used});
    block.memory.reset();
  }
  trial_.clear();
  setWindow({window_.data(), window_.size()});
}

bool DescriptorOutput::takeDirectly(std::string_view text) {
  if (!trial_.empty()) return false;
  write(text);
  return true;
}

void DescriptorOutput::write(std::string_view text) {
  while (!text.empty() && error_ == 0) {
    const ssize_t count = ::write(descriptor_, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {  // the reader made the pipe non-blocking, for its own sake
      pollfd writable = {descriptor_, POLLOUT, 0};
      ::poll(&writable, 1, -1);
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
}

}  // namespace lumisk
